#include "tests/flows/flow_test.h"
#include "tests/flows/pihole_files.h"
#include "tests/flows/saved_files.h"
#include "tests/support/file_trouble.h"

#include <QDir>

namespace corvane::test {

namespace {

const QString kNewTag = QStringLiteral("2026.10.0");
constexpr const char *kBackupFailed = "The update was not started because the backup failed: ";
constexpr const char *kFilesFailed = "Could not write the new compose file: ";
constexpr const char *kRolledBack = "The update did not finish; the pinned version is back to 2026.09.0. Use "
                                    "Start/Restart if Pi-hole is not running.";

/// Something that goes wrong in the middle of an update.
struct Trouble {
    const char *name;
    bool compose;
    QStringList command;
};

void PrintTo(const Trouble &trouble, std::ostream *out) { *out << trouble.name; }

QStringList words(const char *text) { return QString::fromLatin1(text).split(u'|'); }

class FailedUpdate : public FlowTest {
protected:
    FailedUpdate()
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

    /// Everything an update may not leave behind, however it fails.
    void expectOldVersionWithBackups(int backups)
    {
        EXPECT_TEXT(model().pinnedTag(), "2026.09.0");
        EXPECT_TRUE(settings.value(QStringLiteral("pinnedTag")).toString() == model().pinnedTag() || backups == 0);
        EXPECT_TEXT(PiholeFiles::composeTag(), "2026.09.0");
        EXPECT_EQ(PiholeFiles::composePort(), 8080);
        EXPECT_EQ(PiholeFiles::volumes(), PiholeFiles::bothVolumes());
        ASSERT_EQ(PiholeFiles::backups().size(), backups);
        for (const QString &backup : PiholeFiles::backups())
            EXPECT_TRUE(isWholeZip(contentOf(backup))) << backup.toStdString();
        EXPECT_EQ(model().latestTag(), kNewTag) << "the offer stands";
    }

    void expectMessage(const char *begin)
    {
        EXPECT_TRUE(model().updateMessage().startsWith(QLatin1String(begin))) << model().updateMessage().toStdString();
        EXPECT_GT(model().updateMessage().size(), qsizetype(strlen(begin)) + 3);
    }
};

class TroubledUpdate : public FailedUpdate, public testing::WithParamInterface<Trouble> {};

} // namespace

TEST_P(TroubledUpdate, Goes_back_to_the_old_version)
{
    if (GetParam().compose) {
        Mac::ctl(QStringLiteral("compose on"));
        run(model().refreshTools());
    }
    Mac::ctl(GetParam().command);
    update();
    EXPECT_TEXT(model().updateMessage(), kRolledBack);
    EXPECT_FALSE(model().maintOp()->succeeded());
    EXPECT_FALSE(model().maintOp()->failureText().isEmpty());
    expectOldVersionWithBackups(1);
    EXPECT_TRUE(PiholeFiles::environmentIsWhole(model().adminPassword()));
}

INSTANTIATE_TEST_SUITE_P(
    Trouble, TroubledUpdate,
    testing::Values(Trouble{"Pull_fails", false, words("fault|docker|fail|1|no space left on device|--when|pull *")},
                    Trouble{"Pull_is_killed", false, words("fault|docker|die|KILL|--when|pull *")},
                    Trouble{"Network_is_gone", false, words("internet|off")},
                    Trouble{"Disk_is_full", false, words("disk-full|on")},
                    Trouble{"Version_is_withdrawn", false, words("registry|remove|2026.10.0")},
                    Trouble{"Engine_is_stopped_by_the_pull", false,
                            words("fault|docker|fail|1|Cannot connect to the Docker daemon|--when|pull *")},
                    Trouble{"Old_container_stays", false, words("fault|docker|fail|1|permission denied|--when|rm *")},
                    Trouble{"Run_fails", false, words("fault|docker|fail|125|port is already allocated|--when|run *")},
                    Trouble{"Run_is_killed", false, words("fault|docker|die|KILL|--when|run *")},
                    Trouble{"Docker_vanishes_after_the_pull", false, words("fault|docker|vanish|--at|2|--when|*")},
                    Trouble{"Compose_pull_fails", true, words("fault|docker|fail|1|i/o timeout|--when|compose * pull")},
                    Trouble{"Compose_up_fails", true,
                            words("fault|docker|fail|1|address already in use|--when|compose * up *")}),
    [](const testing::TestParamInfo<Trouble> &each) { return std::string(each.param.name); });

TEST_F(FailedUpdate, Is_not_started_when_pihole_gives_no_backup)
{
    Mac::ctl(QStringLiteral("container stop"));
    update();
    EXPECT_EQ(model().updateMessage().toStdString(),
              std::string(kBackupFailed) + "Pi-hole did not answer on 127.0.0.1.");
    expectOldVersionWithBackups(0);
}

TEST_F(FailedUpdate, Is_not_started_when_the_password_is_refused)
{
    model().setAdminPassword(QStringLiteral("not-the-password"));
    update();
    EXPECT_EQ(model().updateMessage().toStdString(),
              std::string(kBackupFailed) + "Pi-hole refused the admin password.");
    expectOldVersionWithBackups(0);
}

TEST_F(FailedUpdate, Is_not_started_when_the_backup_is_no_archive)
{
    for (const char *answer : {"page", "empty"}) {
        Mac::ctl({QStringLiteral("pihole"), QStringLiteral("archive"), QString::fromLatin1(answer)});
        update();
        EXPECT_EQ(model().updateMessage().toStdString(),
                  std::string(kBackupFailed) + "Pi-hole sent an answer this app does not understand.");
        expectOldVersionWithBackups(0);
    }
}

TEST_F(FailedUpdate, Is_not_started_when_the_backup_cannot_be_saved)
{
    write(PiholeFiles::folder() + QStringLiteral("/backups"), "a file in the folder's place");
    update();
    expectMessage(kBackupFailed);
    expectOldVersionWithBackups(0);
}

TEST_F(FailedUpdate, Is_not_started_when_the_disk_is_full)
{
    {
        const FileSizeLimit full(200);
        update();
    }
    expectMessage(kBackupFailed);
    expectOldVersionWithBackups(0);
}

TEST_F(FailedUpdate, Leaves_the_old_files_when_the_compose_file_cannot_be_written)
{
    const QByteArray before = contentOf(PiholeFiles::compose());
    QFile::remove(PiholeFiles::compose());
    QDir().mkpath(PiholeFiles::compose());
    update();
    expectMessage(kFilesFailed);
    EXPECT_TEXT(model().pinnedTag(), "2026.09.0");
    EXPECT_TRUE(PiholeFiles::environmentIsWhole(model().adminPassword()));
    QDir().rmdir(PiholeFiles::compose());
    write(PiholeFiles::compose(), before);
    expectOldVersionWithBackups(1);
}

TEST_F(FailedUpdate, Leaves_the_old_files_when_the_password_file_cannot_be_written)
{
    QFile::remove(PiholeFiles::environment());
    QDir().mkpath(PiholeFiles::environment() + QStringLiteral("/full"));
    update();
    EXPECT_EQ(model().updateMessage().toStdString(), std::string(kFilesFailed) + "Could not write the password file.");
    expectOldVersionWithBackups(1);
    EXPECT_FALSE(Mac::calls(QStringLiteral("docker")).contains(QStringLiteral("pull pihole/pihole:2026.10.0")));
}

TEST_F(FailedUpdate, In_its_download_leaves_the_old_version_to_be_tested)
{
    Mac::ctl(QStringLiteral("fault docker hang --when pull*"));
    launch(model().performUpdate());
    waitFor([this] { return model().maintOp()->running(); }, "the pull runs");
    run(model().runPiholeTests(Wait::No));
    EXPECT_TRUE(model().outcomes().value(QStringLiteral("pihole")).passed);
    EXPECT_TRUE(model().maintOp()->running()) << "the pull still runs";
    model().maintOp()->cancel();
    waitFor([this] { return quiet(); }, "the update ended");
}

TEST_F(FailedUpdate, By_cancelling_goes_back_to_the_old_version)
{
    Mac::ctl(QStringLiteral("fault docker late 5 --when pull*"));
    launch(model().performUpdate());
    waitFor([this] { return model().maintOp()->running(); }, "the pull runs");
    EXPECT_TEXT(PiholeFiles::composeTag(), "2026.10.0");
    model().maintOp()->cancel();
    waitFor([this] { return quiet(); }, "the update ended");
    EXPECT_TEXT(model().updateMessage(), kRolledBack);
    EXPECT_TEXT(model().maintOp()->failureText(), "Cancelled.");
    expectOldVersionWithBackups(1);
    EXPECT_TEXT(PiholeFiles::containerImage(), "pihole/pihole:2026.09.0");
}

} // namespace corvane::test
