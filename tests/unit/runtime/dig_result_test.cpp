#include "runtime/dig_result.h"
#include "tests/support/fake_tool.h"

#include <gtest/gtest.h>

namespace corvane::test {
namespace {

DigResult parse(const QString &output, int status = 0)
{
    CommandResult result;
    result.status = status;
    result.standardOutput = output;
    return DigResult::parse(result);
}

TEST(DigResult, Every_answer_gives_its_last_column_in_order)
{
    const DigResult result = parse(recorded("dig_noerror.txt"));
    EXPECT_TRUE(result.ok);
    EXPECT_EQ(result.status, QStringLiteral("NOERROR"));
    const QStringList expected{QStringLiteral("edge.example.org."), QStringLiteral("192.0.2.10"),
                               QStringLiteral("192.0.2.11")};
    EXPECT_EQ(result.answers, expected);
    EXPECT_TRUE(result.answered());
}

TEST(DigResult, A_blocked_name_answers_with_the_empty_address)
{
    const DigResult result = parse(recorded("dig_blocked.txt"));
    EXPECT_EQ(result.answers, QStringList(QStringLiteral("0.0.0.0")));
    EXPECT_TRUE(result.answered());
}

TEST(DigResult, A_name_that_does_not_exist_is_a_reply_without_an_answer)
{
    const DigResult result = parse(recorded("dig_nxdomain.txt"));
    EXPECT_TRUE(result.ok);
    EXPECT_EQ(result.status, QStringLiteral("NXDOMAIN"));
    EXPECT_TRUE(result.answers.isEmpty());
    EXPECT_FALSE(result.answered());
}

TEST(DigResult, The_status_is_the_first_one_printed)
{
    EXPECT_EQ(parse(recorded("dig_txt_record.txt")).status, QStringLiteral("NOERROR"));
}

TEST(DigResult, A_refused_connection_or_silence_is_no_reply)
{
    for (const char *name : {"dig_refused_connection.txt", "dig_timeout.txt"}) {
        const DigResult result = parse(recorded(name), 9);
        EXPECT_FALSE(result.ok) << name;
        EXPECT_EQ(result.status, QString()) << name;
        EXPECT_TRUE(result.answers.isEmpty()) << name;
    }
}

TEST(DigResult, A_status_line_does_not_make_up_for_a_failed_run)
{
    const DigResult result = parse(recorded("dig_noerror.txt"), 1);
    EXPECT_FALSE(result.ok);
    EXPECT_FALSE(result.answered());
    EXPECT_EQ(result.status, QStringLiteral("NOERROR"));
}

TEST(DigResult, A_good_run_without_a_status_line_is_no_reply)
{
    EXPECT_FALSE(parse(recorded("dig_refused_connection.txt"), 0).ok);
}

TEST(DigResult, Lines_of_fewer_than_five_columns_and_comments_are_no_answers)
{
    EXPECT_TRUE(parse(QStringLiteral("a b c d\n \t;a b c d e\n\n\t \n")).answers.isEmpty());
    EXPECT_EQ(parse(QStringLiteral(" \ta.\t1  IN A\t\t10.0.0.1 \t\n")).answers,
              QStringList(QStringLiteral("10.0.0.1")));
}

TEST(DigResult, An_answer_whose_time_is_over_is_told_by_its_extended_error)
{
    const QString answer =
        QStringLiteral(";; ->>HEADER<<- opcode: QUERY, status: NOERROR, id: 1\n%1\nexample.com.\t0\tIN\t"
                       "A\t93.184.215.14\n");
    EXPECT_TRUE(parse(answer.arg(QStringLiteral("; EDE: 3 (Stale Answer)"))).stale());
    EXPECT_FALSE(parse(answer.arg(QStringLiteral("; EDE: 30 (Other)"))).stale());
    EXPECT_FALSE(parse(answer.arg(QStringLiteral("; EDE: 15 (Blocked): (gravity)"))).stale());
    EXPECT_FALSE(parse(answer.arg(QString())).stale());
}

TEST(DigResult, The_output_keeps_both_streams)
{
    CommandResult result;
    result.standardOutput = QStringLiteral("out\n");
    result.standardError = QStringLiteral("err\n");
    EXPECT_EQ(DigResult::parse(result).output, QStringLiteral("out\nerr"));
}

TEST(DigResult, A_dig_that_never_started_is_no_reply)
{
    CommandResult result;
    result.launchError = QStringLiteral("No such file or directory");
    EXPECT_EQ(DigResult::parse(result), DigResult());
}

} // namespace
} // namespace corvane::test
