#include "app/admin_password.h"

#include <QSet>
#include <gtest/gtest.h>

namespace corvane::test {

namespace {

std::string problem(const QString &password)
{
    return AdminPassword::problem(password).value_or(QString()).toStdString();
}

} // namespace

TEST(AdminPassword, Seven_valid_characters_are_too_few)
{
    EXPECT_EQ(problem(QStringLiteral("abcdefg")), "Use at least 8 characters.");
}

TEST(AdminPassword, A_blank_is_refused)
{
    EXPECT_EQ(problem(QStringLiteral("abcd efgh")), "Use only letters, digits and - _ . @ +");
}

TEST(AdminPassword, The_length_is_named_before_the_characters)
{
    EXPECT_EQ(problem(QStringLiteral("a b")), "Use at least 8 characters.");
}

TEST(AdminPassword, Length_counts_what_a_person_sees_as_one_character)
{
    // Four families of five code points each are four characters, not twenty.
    const QString families =
        QString::fromUtf8("👩‍👩‍👦👩‍👩‍👦👩‍👩‍👦👩‍👩‍👦");
    EXPECT_EQ(problem(families), "Use at least 8 characters.");
    EXPECT_FALSE(AdminPassword::isTooShort(families + families));
}

TEST(AdminPassword, Nothing_typed_yet_is_too_short_and_breaks_no_other_rule)
{
    EXPECT_TRUE(AdminPassword::isTooShort({}));
    EXPECT_FALSE(AdminPassword::hasForbiddenCharacter({}));
}

TEST(AdminPassword, Every_character_of_the_alphabet_is_accepted)
{
    EXPECT_EQ(problem(QStringLiteral("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789-_.@+")), "");
}

TEST(AdminPassword, Any_other_character_is_forbidden_wherever_it_stands)
{
    for (const char *bad : {"with blank", "sl/ash", "quote'", "dollar$", "tab\t"})
        EXPECT_TRUE(AdminPassword::hasForbiddenCharacter(QString::fromLatin1(bad))) << bad;
}

TEST(AdminPassword, A_letter_with_an_accent_is_refused)
{
    EXPECT_EQ(problem(QString::fromUtf8("abcdefgé")), "Use only letters, digits and - _ . @ +");
}

TEST(AdminPassword, Generated_ones_keep_the_rules_and_hold_no_look_alikes)
{
    QSet<QString> seen;
    QSet<QChar> used;
    for (int i = 0; i < 2000; ++i) {
        const QString password = AdminPassword::generate();
        ASSERT_EQ(password.size(), 16);
        ASSERT_EQ(problem(password), "");
        for (const QChar c : password)
            used.insert(c);
        seen.insert(password);
    }
    EXPECT_EQ(seen.size(), 2000);
    EXPECT_EQ(used.size(), 56) << "every character turns up among 32,000 draws, and no other";
    for (const char alike : {'l', 'o', 'I', 'O', '0', '1'})
        EXPECT_FALSE(used.contains(QLatin1Char(alike))) << alike;
}

TEST(AdminPassword, Every_character_is_drawn_equally_often)
{
    QHash<QChar, int> counts;
    constexpr int kPasswords = 7000; // 112,000 characters, 2,000 of each expected
    for (int i = 0; i < kPasswords; ++i) {
        const QString password = AdminPassword::generate();
        for (const QChar c : password)
            ++counts[c];
    }
    double chiSquare = 0;
    for (const int count : counts)
        chiSquare += (count - 2000.0) * (count - 2000.0) / 2000.0;
    EXPECT_LT(chiSquare, 120) << "55 degrees of freedom; beyond 120 once in a million runs";
}

} // namespace corvane::test
