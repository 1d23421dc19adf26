#include "tests/flows/flow_test.h"
#include "tests/flows/pihole_files.h"
#include "tests/flows/saved_files.h"

#include <QDir>
#include <QRegularExpression>

namespace corvane::test {

namespace {

const QString kNewTag = QStringLiteral("2026.10.0");
const QString kOldTag = QStringLiteral("2026.09.0");

class Update : public FlowTest {
protected:
    Update()
        : FlowTest(QStringLiteral("running"))
    {
        Mac::ctl(QStringLiteral("pihole login-limit 100")); // the tests before this one logged in, too
        model().setLatestTag(kNewTag);
    }

    void update()
    {
        run(model().performUpdate());
        waitFor([this] { return quiet(); }, "the update ended");
    }

    static QStringList dockerChanges()
    {
        return Mac::calls(QStringLiteral("docker"))
            .filter(QRegularExpression(QStringLiteral("^(pull|rm|run|compose .*(pull|up))\\b")));
    }
};

} // namespace

TEST_F(Update, A_question_comes_first_and_cancel_changes_nothing)
{
    user.cancels();
    update();
    ASSERT_EQ(user.alerts().size(), 1);
    const Alert alert = user.alerts().first();
    EXPECT_TEXT(alert.title, "Update Pi-hole to 2026.10.0?");
    EXPECT_TEXT(alert.text, "A backup is saved first, then the new image is downloaded and Pi-hole restarts. Your data "
                            "volumes are never deleted.");
    EXPECT_TEXT(alert.accept, "Update");
    EXPECT_TEXT(alert.reject, "Cancel");
    EXPECT_EQ(alert.style, Alert::Style::Informational);
    EXPECT_TRUE(PiholeFiles::backups().isEmpty());
    EXPECT_TEXT(PiholeFiles::composeTag(), "2026.09.0");
    EXPECT_TRUE(dockerChanges().isEmpty());
}

TEST_F(Update, Without_a_newer_version_nothing_is_asked)
{
    model().setLatestTag(std::nullopt);
    update();
    EXPECT_TRUE(user.alerts().isEmpty());
}

TEST_F(Update, A_whole_backup_is_saved_before_the_new_image_runs)
{
    const QDateTime begin = QDateTime::currentDateTime();
    update();
    EXPECT_TEXT(model().updateMessage(), "Updated to 2026.10.0.");
    EXPECT_FALSE(model().latestTag());
    EXPECT_TEXT(model().maintOp()->title(), "Updating Pi-hole to 2026.10.0");
    EXPECT_TRUE(model().maintOp()->succeeded());

    const QStringList backups = PiholeFiles::backups();
    ASSERT_EQ(backups.size(), 1);
    const auto name = QRegularExpression(QStringLiteral("/pihole-backup-(\\d{8}-\\d{6})-before-2026\\.10\\.0\\.zip$"))
                          .match(backups.first());
    ASSERT_TRUE(name.hasMatch()) << backups.first().toStdString();
    const QDateTime time = QDateTime::fromString(name.captured(1), QStringLiteral("yyyyMMdd-HHmmss"));
    EXPECT_LT(std::abs(begin.secsTo(time)), 30);
    EXPECT_TRUE(isWholeZip(contentOf(backups.first())));

    EXPECT_TEXT(model().pinnedTag(), "2026.10.0");
    EXPECT_EQ(settings.value(QStringLiteral("pinnedTag")).toString(), kNewTag);
    EXPECT_TEXT(PiholeFiles::composeTag(), "2026.10.0");
    EXPECT_TEXT(PiholeFiles::containerImage(), "pihole/pihole:2026.10.0");
    EXPECT_EQ(PiholeFiles::volumes(), PiholeFiles::bothVolumes());
    EXPECT_TRUE(model().outcomes().value(QStringLiteral("pihole")).passed) << "the tests ran on the new container";
}

TEST_F(Update, The_image_is_pulled_before_the_old_container_goes)
{
    update();
    const QStringList calls = dockerChanges();
    ASSERT_EQ(calls.size(), 3);
    EXPECT_TEXT(calls[0], "pull pihole/pihole:2026.10.0");
    EXPECT_TEXT(calls[1], "rm -f pihole");
    EXPECT_TRUE(calls[2].startsWith(QStringLiteral("run -d --name pihole"))) << calls[2].toStdString();
    EXPECT_FALSE(calls.join(u' ').contains(model().adminPassword()));
}

TEST_F(Update, With_compose_the_project_is_pulled_and_brought_up)
{
    Mac::ctl(QStringLiteral("compose on"));
    run(model().refreshTools());
    update();
    EXPECT_TEXT(model().updateMessage(), "Updated to 2026.10.0.");
    const QStringList calls = dockerChanges();
    ASSERT_EQ(calls.size(), 3);
    EXPECT_TRUE(calls[0].endsWith(QStringLiteral("docker-compose.yml pull"))) << calls[0].toStdString();
    EXPECT_TRUE(calls[2].endsWith(QStringLiteral("up -d"))) << calls[2].toStdString();
    EXPECT_TEXT(PiholeFiles::containerImage(), "pihole/pihole:2026.10.0");
}

TEST_F(Update, A_second_press_during_the_update_does_nothing)
{
    launch(model().performUpdate());
    run(model().performUpdate());
    waitFor([this] { return !model().updateMessage().isEmpty(); }, "the update ended");
    EXPECT_EQ(user.alerts().size(), 1);
    waitFor([this] { return quiet(); }, "the tests ended");
    model().setLatestTag(kNewTag);
    Mac::ctl(QStringLiteral("fault docker late 0.3 --when pull*"));
    launch(model().performUpdate());
    waitFor([this] { return model().maintOp()->running(); }, "the update runs");
    run(model().performUpdate());
    run(model().changeWebPort(8082));
    run(model().removePihole());
    EXPECT_EQ(user.alerts().size(), 2);
    EXPECT_EQ(model().webPort(), 8080);
    waitFor([this] { return quiet(); }, "the update ended");
}

TEST_F(Update, A_port_change_during_the_backup_does_nothing)
{
    user.beforeAnswering([this] { run(model().changeWebPort(8082)); });
    update();
    EXPECT_EQ(model().webPort(), 8080);
    EXPECT_TEXT(model().updateMessage(), "Updated to 2026.10.0.");
}

TEST_F(Update, Without_docker_nothing_begins)
{
    Mac::ctl(QStringLiteral("fault docker vanish"));
    update();
    EXPECT_TEXT(model().updateMessage(), "docker was not found.");
    EXPECT_TEXT(model().pinnedTag(), "2026.09.0");
    EXPECT_TEXT(PiholeFiles::composeTag(), "2026.09.0");
}

} // namespace corvane::test
