#include "app/dialogs.h"

#include <gtest/gtest.h>

namespace corvane::test {

namespace {

QCoro::Task<> record(Dialogs &dialogs, QString title, QStringList *answers)
{
    Alert alert;
    alert.title = title;
    const bool accepted = co_await dialogs.confirm(alert);
    answers->append(title + (accepted ? QStringLiteral(" yes") : QStringLiteral(" no")));
}

QCoro::Task<> pick(Dialogs &dialogs, QStringList *answers)
{
    const FilePanel panel;
    const std::optional<QString> path = co_await dialogs.choose(panel);
    answers->append(path.value_or(QStringLiteral("nothing")));
}

} // namespace

TEST(DialogsTest, Questions_are_asked_one_at_a_time_in_turn)
{
    Dialogs dialogs;
    QStringList answers;
    record(dialogs, QStringLiteral("first"), &answers);
    record(dialogs, QStringLiteral("second"), &answers);
    ASSERT_TRUE(dialogs.alert());
    EXPECT_EQ(dialogs.alert()->title, QStringLiteral("first"));
    dialogs.answer(true);
    EXPECT_EQ(dialogs.alert()->title, QStringLiteral("second"));
    dialogs.answer(false);
    EXPECT_FALSE(dialogs.alert());
    EXPECT_EQ(answers.join(u',').toStdString(), "first yes,second no");
}

TEST(DialogsTest, An_answer_to_nothing_is_ignored)
{
    Dialogs dialogs;
    dialogs.answer(true);
    dialogs.answer(QStringLiteral("/tmp/file"));
    EXPECT_FALSE(dialogs.alert());
}

TEST(DialogsTest, A_panel_waits_until_the_alert_before_it_is_answered)
{
    Dialogs dialogs;
    QStringList answers;
    record(dialogs, QStringLiteral("alert"), &answers);
    pick(dialogs, &answers);
    EXPECT_FALSE(dialogs.panel());
    dialogs.answer(QStringLiteral("/early"));
    dialogs.answer(true);
    ASSERT_TRUE(dialogs.panel());
    dialogs.answer(QStringLiteral("/chosen"));
    EXPECT_EQ(answers.join(u',').toStdString(), "alert yes,/chosen");
}

TEST(DialogsTest, Questions_still_open_at_the_end_count_as_cancelled)
{
    QStringList answers;
    {
        Dialogs dialogs;
        record(dialogs, QStringLiteral("open"), &answers);
        pick(dialogs, &answers);
    }
    EXPECT_EQ(answers.join(u',').toStdString(), "open no,nothing");
}

} // namespace corvane::test
