#include "app/version_tag.h"

#include <gtest/gtest.h>

namespace corvane::test {

namespace {

bool newer(const char *tag, const char *other) { return isNewer(QString::fromLatin1(tag), QString::fromLatin1(other)); }
bool accepted(const char *text) { return isVersionTag(QString::fromUtf8(text)); }

} // namespace

TEST(VersionTag, Numbers_count_and_not_letters)
{
    EXPECT_TRUE(newer("2026.09.10", "2026.09.2"));
    EXPECT_FALSE(newer("2026.09.1", "2026.09.10"));
    EXPECT_TRUE(newer("2027.01.0", "2026.12.9"));
    EXPECT_FALSE(newer("2026.09.0", "2026.09.0"));
}

TEST(VersionTag, Another_spelling_of_the_same_numbers_counts_as_newer)
{
    EXPECT_TRUE(newer("2026.09.00", "2026.09.0"));
    EXPECT_TRUE(newer("2026.09.0", "2026.09.00"));
}

TEST(VersionTag, A_shorter_tag_that_begins_alike_is_older)
{
    EXPECT_TRUE(newer("2026.09.0", "2026.09"));
    EXPECT_FALSE(newer("2026.09", "2026.09.0"));
}

TEST(VersionTag, A_number_beyond_every_size_is_still_the_larger)
{
    EXPECT_TRUE(newer("2026.09.99999999999999999999999999", "2026.09.1"));
}

TEST(VersionTag, Only_the_stated_form_is_accepted)
{
    EXPECT_TRUE(accepted("2026.09.0"));
    EXPECT_TRUE(accepted("2026.09.123"));
    for (const char *wrong : {"v2026.09.0", "2026.09.0-rc1", "2026.9.0", "26.09.0", "2026.09", "2026.09.", "", "latest",
                              "2026.09.0\n", "\n2026.09.0", "2026.09.0; rm -rf /", "２０２６.09.0", "2026.09.0 "}) {
        EXPECT_FALSE(accepted(wrong)) << '"' << wrong << '"';
    }
}

} // namespace corvane::test
