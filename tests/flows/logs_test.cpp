#include "tests/flows/flow_test.h"

#include <QDir>
#include <QFile>
#include <QSignalSpy>

namespace corvane::test {

namespace {

class Logs : public FlowTest {
protected:
    Logs()
        : FlowTest(QStringLiteral("running"))
    {}

    /// Waits until the follower has brought at least one line.
    void follow()
    {
        model().setFollowing(true);
        waitFor([this] { return model().followOp()->lineCount() > 1; }, "lines are followed");
    }

    static QString readAll(const QString &path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QStringLiteral("cannot be read");
    }
};

} // namespace

TEST_F(Logs, Refresh_loads_the_containers_log)
{
    EXPECT_TEXT(model().logText(), "");
    QSignalSpy changes(&model(), &AppModel::logTextChanged);
    run(model().loadLogs());
    EXPECT_GE(model().logText().count(u'\n'), 3);
    EXPECT_EQ(changes.count(), 1);
    EXPECT_TRUE(Mac::calls(QStringLiteral("docker")).contains(QStringLiteral("logs --tail 300 pihole")));
}

TEST_F(Logs, Without_docker_the_panel_says_so)
{
    Mac::reset(QStringLiteral("bare"));
    run(model().loadLogs());
    EXPECT_TEXT(model().logText(), "docker was not found.");
}

TEST_F(Logs, Following_shows_new_lines_as_they_come)
{
    follow();
    EXPECT_TEXT(model().followOp()->title(), "Following logs");
    EXPECT_TEXT(model().followOp()->lines().first(), "> docker logs --follow --tail 100 pihole");
    const qint64 before = model().followOp()->lineCount();
    run(model().pauseBlocking()); // which Pi-hole logs, unlike questions
    waitFor([&] { return model().followOp()->lineCount() > before; }, "the pause shows up");
    EXPECT_TEXT(model().logText(), model().followOp()->lines().join(u'\n').toStdString());
    EXPECT_FALSE(model().operationRunning()) << "following is no operation that disables buttons";
}

TEST_F(Logs, The_followed_text_stays_when_following_ends)
{
    follow();
    model().setFollowing(false);
    waitFor([this] { return !model().followOp()->running(); }, "the follower ended");
    EXPECT_FALSE(model().following());
    EXPECT_TRUE(model().logText().startsWith(QStringLiteral("> docker logs")));
    run(model().loadLogs());
    EXPECT_FALSE(model().logText().startsWith(QStringLiteral("> docker logs")))
        << "Refresh shows the loaded text again";
}

TEST_F(Logs, Refresh_while_following_changes_nothing)
{
    follow();
    run(model().loadLogs());
    EXPECT_FALSE(Mac::calls(QStringLiteral("docker")).contains(QStringLiteral("logs --tail 300 pihole")));
    model().setFollowing(false);
    waitFor([this] { return !model().followOp()->running(); }, "the follower ended");
}

TEST_F(Logs, Off_and_on_again_starts_a_new_follower_after_the_old_one_ended)
{
    follow();
    model().setFollowing(false);
    model().setFollowing(true);
    EXPECT_TRUE(model().following());
    waitFor([] { return Mac::calls(QStringLiteral("docker")).filter(QStringLiteral("--follow")).size() == 2; },
            "a second follower");
    EXPECT_TRUE(model().following());
    model().setFollowing(false);
    waitFor([this] { return !model().followOp()->running(); }, "the follower ended");
}

TEST_F(Logs, A_follower_that_ends_by_itself_switches_follow_off)
{
    follow();
    Mac::ctl(QStringLiteral("container stop"));
    waitFor([this] { return !model().following(); }, "Follow went off");
}

TEST_F(Logs, Switching_follow_on_without_docker_puts_it_back_off)
{
    Mac::reset(QStringLiteral("bare"));
    model().setFollowing(true);
    EXPECT_FALSE(model().following());
    EXPECT_TEXT(model().notice(), "docker was not found.");
}

TEST_F(Logs, Save_writes_what_is_on_screen)
{
    run(model().loadLogs());
    const QString path = QDir::home().filePath(QStringLiteral("saved.txt"));
    user.picks(path);
    run(model().saveLogs());
    ASSERT_EQ(user.panels().size(), 1);
    EXPECT_TEXT(user.panels().first().proposedName, "pihole-log.txt");
    EXPECT_TEXT(readAll(path), model().logText().toStdString());
    EXPECT_TEXT(model().apiMessage(), "");
}

TEST_F(Logs, A_cancelled_save_says_nothing_and_writes_nothing)
{
    user.cancels();
    run(model().saveLogs());
    EXPECT_TEXT(model().apiMessage(), "");
}

TEST_F(Logs, A_save_that_fails_says_why)
{
    user.picks(QStringLiteral("/nowhere/at/all.txt"));
    run(model().saveLogs());
    EXPECT_TRUE(model().apiMessage().startsWith(QStringLiteral("Could not save the log: ")))
        << model().apiMessage().toStdString();
    EXPECT_GT(model().apiMessage().size(), 26);
}

} // namespace corvane::test
