#include "exec/command_result.h"

#include <gtest/gtest.h>

namespace corvane::test {

using namespace Qt::Literals::StringLiterals;

namespace {

CommandResult printed(const QString &output, const QString &error)
{
    CommandResult result;
    result.status = 0;
    result.standardOutput = output;
    result.standardError = error;
    return result;
}

} // namespace

TEST(CommandResult, Combined_joins_the_trimmed_streams_with_a_line_feed)
{
    EXPECT_EQ(printed(u"  out\n\n"_s, u"\n err\t\r\n"_s).combined(), u"out\nerr"_s);
}

TEST(CommandResult, Combined_drops_what_is_empty_after_trimming)
{
    EXPECT_EQ(printed(u" \n\t\n"_s, u"err\n"_s).combined(), u"err"_s);
    EXPECT_EQ(printed(u"out\n"_s, u"\n"_s).combined(), u"out"_s);
    EXPECT_EQ(printed(QString(), QString()).combined(), QString());
    EXPECT_EQ(printed(u"\n"_s, u" "_s).combined(), QString());
}

TEST(CommandResult, Combined_keeps_lines_inside_a_stream)
{
    EXPECT_EQ(printed(u"a\n\n b\n"_s, QString()).combined(), u"a\n\n b"_s);
}

TEST(CommandResult, Combined_does_not_hold_the_launch_error)
{
    CommandResult result;
    result.launchError = u"No such file or directory"_s;
    EXPECT_EQ(result.combined(), QString());
}

TEST(CommandResult, A_result_that_was_never_filled_has_not_succeeded)
{
    EXPECT_EQ(CommandResult().status, -1);
    EXPECT_FALSE(CommandResult().succeeded());
}

TEST(CommandResult, Success_needs_a_start_an_end_in_time_and_status_0)
{
    CommandResult result = printed(QString(), QString());
    EXPECT_TRUE(result.succeeded());
    result.timedOut = true;
    EXPECT_FALSE(result.succeeded());
    result = printed(QString(), QString());
    result.status = 1;
    EXPECT_FALSE(result.succeeded());
    result = printed(QString(), QString());
    result.launchError = QString();
    EXPECT_FALSE(result.succeeded());
}

} // namespace corvane::test
