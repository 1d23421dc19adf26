#include "ui/decisions/password_hints.h"

#include <gtest/gtest.h>

namespace corvane {

namespace {

TEST(PasswordHints, Eight_characters_are_enough)
{
    EXPECT_TRUE(passwordTooShort({}));
    EXPECT_TRUE(passwordTooShort(QStringLiteral("seven77")));
    EXPECT_FALSE(passwordTooShort(QStringLiteral("eight888")));
}

TEST(PasswordHints, A_character_counts_as_its_user_sees_it)
{
    // A family of four is one character in eleven code units; seven of them are seven characters.
    const QString family =
        QString::fromUtf8("\xF0\x9F\x91\xA8\xE2\x80\x8D\xF0\x9F\x91\xA9\xE2\x80\x8D\xF0\x9F\x91\xA7");
    EXPECT_TRUE(passwordTooShort(family.repeated(7)));
    EXPECT_FALSE(passwordTooShort(family.repeated(8)));
}

TEST(PasswordHints, Letters_digits_and_five_signs_are_allowed)
{
    EXPECT_FALSE(passwordHasOtherCharacters(QStringLiteral("abcXYZ019-_.@+")));
    for (const char *bad : {"with blank", "sl/ash", "quote'", "dollar$", "tab\t"})
        EXPECT_TRUE(passwordHasOtherCharacters(QString::fromLatin1(bad))) << bad;
    EXPECT_TRUE(passwordHasOtherCharacters(QString::fromUtf8("M\xC3\xBCller")));
    EXPECT_FALSE(passwordHasOtherCharacters({}));
}

} // namespace

} // namespace corvane
