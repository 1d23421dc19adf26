#include "app/release_feed.h"

#include <gtest/gtest.h>

namespace corvane::test {

namespace {

std::string tag(const QByteArray &answer)
{
    return ReleaseFeed::parse(answer).value_or(QStringLiteral("none")).toStdString();
}

} // namespace

TEST(ReleaseFeedAnswer, The_tag_is_taken_from_its_member)
{
    EXPECT_EQ(tag(R"({"id": 1, "tag_name": "2026.10.0", "name": "2026.99.9"})"), "2026.10.0");
}

TEST(ReleaseFeedAnswer, Anything_else_holds_no_tag)
{
    for (const char *answer :
         {"", "{}", "[]", "null", "2026.10.0", "\"2026.10.0\"", R"({"tag_name": 2026})", R"({"tag_name": null})",
          R"({"tag_name": "v2026.10.0"})", R"({"tag_name": "2026.10.0\n"})", R"([{"tag_name": "2026.10.0"}])",
          R"({"tag_name": "2026.10.0")", "<html>", "\xff\xfe"}) {
        EXPECT_EQ(tag(answer), "none") << answer;
    }
}

} // namespace corvane::test
