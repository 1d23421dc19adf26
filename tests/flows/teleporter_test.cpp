#include "tests/flows/flow_test.h"
#include "tests/flows/reads.h"
#include "tests/flows/saved_files.h"
#include "tests/support/file_trouble.h"

#include <QCoro/QCoroTask>
#include <QDeadlineTimer>
#include <QDir>
#include <QRegularExpression>

#include <sys/stat.h>

namespace corvane::test {

namespace {

class Backups : public FlowTest {
protected:
    Backups()
        : FlowTest(QStringLiteral("running"))
    {
        Mac::ctl(QStringLiteral("pihole login-limit 100"));     // every import ends the session
        Mac::ctl(QStringLiteral("pihole restart-seconds 0.5")); // long enough to be seen
    }

    static QString home(const char *name) { return QDir::home().filePath(QString::fromUtf8(name)); }

    /// Saves a good archive under this name.
    QString exported(const char *name)
    {
        user.picks(home(name));
        run(model().exportBackup());
        EXPECT_TRUE(isWholeZip(contentOf(home(name)))) << model().notice().toStdString();
        return home(name);
    }

    void import(const QString &path)
    {
        user.picks(path);
        run(model().importBackup());
    }

    /// Begins an import and waits until Pi-hole has gone away to restart after it.
    void importUntilPiholeRestarts(const QString &path)
    {
        user.picks(path);
        model().setNotice({});
        launch(model().importBackup());
        waitFor([this] { return !model().notice().isEmpty(); }, "the import ended");
        EXPECT_TEXT(model().notice(), "Backup restored.");
        waitUntilPageAnswers(false);
    }

    void waitUntilPageAnswers(bool answers)
    {
        const QDeadlineTimer deadline(std::chrono::seconds(20));
        while (QCoro::waitFor(model().api().webAnswers()) != answers)
            ASSERT_FALSE(deadline.hasExpired());
    }
};

} // namespace

TEST_F(Backups, Export_saves_a_whole_zip_where_the_user_wants_it)
{
    exported("my backup.zip");
    EXPECT_TEXT(model().notice(), "Backup saved to my backup.zip.");
    ASSERT_EQ(user.panels().size(), 1);
    const FilePanel panel = user.panels().first();
    EXPECT_EQ(panel.purpose, FilePanel::Purpose::Save);
    EXPECT_TEXT(panel.suffix, "zip");
    const QRegularExpressionMatch name =
        QRegularExpression(QStringLiteral("^pihole-backup-(\\d{8}-\\d{6})\\.zip$")).match(panel.proposedName);
    ASSERT_TRUE(name.hasMatch()) << panel.proposedName.toStdString();
    const QDateTime time = QDateTime::fromString(name.captured(1), QStringLiteral("yyyyMMdd-HHmmss"));
    EXPECT_LT(std::abs(time.secsTo(QDateTime::currentDateTime())), 30);
}

TEST_F(Backups, Two_exports_to_the_same_name_leave_the_second)
{
    exported("twice.zip");
    ASSERT_TRUE(QFile::resize(home("twice.zip"), 10));
    exported("twice.zip");
    ASSERT_EQ(user.panels().size(), 2);
}

TEST_F(Backups, A_cancelled_export_writes_nothing_and_says_nothing)
{
    model().setNotice(QStringLiteral("Backup failed: an older one"));
    user.cancels();
    run(model().exportBackup());
    EXPECT_TEXT(model().notice(), "");
    EXPECT_EQ(user.panels().size(), 1);
}

TEST_F(Backups, A_pause_that_the_user_ends_during_the_export_stays_ended)
{
    run(model().pauseBlocking(std::chrono::hours(1)));
    user.cancels();
    launch(model().exportBackup());
    run(model().resumeBlocking());
    waitFor([this] { return quiet(); }, "the export ended");
    EXPECT_TEXT(model().apiMessage(), "Blocking is back on.");
    run(model().refreshStatus(Stats::Include));
    ASSERT_TRUE(model().blocking());
    EXPECT_TRUE(model().blocking()->enabled);
}

TEST_F(Backups, Export_from_a_pihole_that_is_stopped_fails_before_any_panel)
{
    Mac::ctl(QStringLiteral("container stop"));
    run(model().exportBackup());
    EXPECT_TEXT(model().notice(), "Backup failed: Pi-hole did not answer on 127.0.0.1.");
    EXPECT_TRUE(user.panels().isEmpty());
}

TEST_F(Backups, Export_with_a_wrong_password_says_that_it_was_refused)
{
    model().setAdminPassword(QStringLiteral("not-the-password"));
    run(model().exportBackup());
    EXPECT_TEXT(model().notice(), "Backup failed: Pi-hole refused the admin password.");
}

TEST_F(Backups, A_full_disk_fails_the_export_and_keeps_the_older_file)
{
    const QString path = exported("full.zip");
    const QByteArray before = contentOf(path);
    {
        const FileSizeLimit full(200);
        run(model().exportBackup());
    }
    EXPECT_TRUE(model().notice().startsWith(QStringLiteral("Backup failed: "))) << model().notice().toStdString();
    EXPECT_GT(model().notice().size(), 18);
    EXPECT_EQ(contentOf(path), before);
    EXPECT_EQ(QDir::home().entryList({QStringLiteral("full*")}).size(), 1) << "nothing half-written is left";
}

TEST_F(Backups, A_place_that_takes_no_file_fails_the_export)
{
    for (const char *place : {"/System/Library/backup.zip", "/no/such/folder/backup.zip", "/Users"}) {
        user.picks(QString::fromUtf8(place));
        run(model().exportBackup());
        EXPECT_TRUE(model().notice().startsWith(QStringLiteral("Backup failed: ")))
            << place << ": " << model().notice().toStdString();
    }
}

TEST_F(Backups, Import_replaces_piholes_settings_after_a_question)
{
    const QString path = exported("mine.zip");
    importUntilPiholeRestarts(path);
    waitFor([this] { return model().statusChecked(); }, "the status was refreshed afterwards");
    ASSERT_EQ(user.alerts().size(), 1);
    const Alert alert = user.alerts().first();
    EXPECT_TEXT(alert.title, "Restore this backup?");
    EXPECT_TEXT(alert.text,
                "Pi-hole's settings, lists and local DNS entries will be replaced by the contents of mine.zip.");
    EXPECT_TEXT(alert.accept, "Restore backup");
    EXPECT_TEXT(alert.reject, "Cancel");
    EXPECT_EQ(alert.style, Alert::Style::Warning);
    EXPECT_EQ(user.panels().last().purpose, FilePanel::Purpose::Open);
    EXPECT_TEXT(user.panels().last().suffix, "zip");
    waitUntilPageAnswers(true);
}

TEST_F(Backups, Any_file_name_travels_to_pihole)
{
    const QString good = exported("good.zip");
    for (const char *name :
         {"with \"quotes\".zip", "two\nlines\r\n.zip", "Sicherung für Zoë 備份.zip", "100%.zip", ";a=b.zip"}) {
        SCOPED_TRACE(name);
        ASSERT_TRUE(QFile::copy(good, home(name)));
        importUntilPiholeRestarts(home(name));
        waitUntilPageAnswers(true);
    }
}

TEST_F(Backups, A_cancelled_question_does_not_read_the_file)
{
    exported("unread.zip");
    QDir().mkpath(home("kept"));
    ASSERT_TRUE(QFile::rename(home("unread.zip"), home("kept/unread.zip")));
    model().setNotice({});
    Reads reads(home("kept"));
    user.picks(home("kept/unread.zip"));
    user.beforeAnswering([this] { user.beforeAnswering([this] { user.cancels(); }); });
    run(model().importBackup());
    EXPECT_EQ(user.alerts().size(), 1);
    EXPECT_FALSE(reads.any());
    EXPECT_TEXT(model().notice(), "");

    user.agrees();
    run(model().importBackup());
    EXPECT_TRUE(reads.any());
}

TEST_F(Backups, A_cancelled_panel_asks_nothing_more)
{
    user.cancels();
    run(model().importBackup());
    EXPECT_TRUE(user.alerts().isEmpty());
    EXPECT_TEXT(model().notice(), "");
}

TEST_F(Backups, A_file_that_cannot_be_read_fails_the_import)
{
    ASSERT_EQ(::mkfifo(QFile::encodeName(home("pipe.zip")).constData(), 0600), 0);
    QDir().mkpath(home("folder.zip"));
    QFile::link(home("circle.zip"), home("circle.zip"));
    QFile huge(home("huge.zip"));
    ASSERT_TRUE(huge.open(QIODevice::WriteOnly) && huge.resize(qint64(300) << 20));
    for (const char *name : {"pipe.zip", "folder.zip", "circle.zip", "huge.zip", "missing.zip"}) {
        import(home(name));
        EXPECT_TRUE(model().notice().startsWith(QStringLiteral("Restore failed: ")))
            << name << ": " << model().notice().toStdString();
        EXPECT_GT(model().notice().size(), 18) << name;
    }
}

TEST_F(Backups, A_file_that_is_no_archive_is_refused_by_pihole)
{
    const QByteArray good = contentOf(exported("good.zip"));
    for (const QByteArray &bytes : {QByteArray("This is no zip."), QByteArray(), good.left(good.size() / 2)}) {
        write(home("bad.zip"), bytes);
        import(home("bad.zip"));
        EXPECT_TEXT(model().notice(), "Restore failed: Pi-hole answered with HTTP 400") << bytes.size();
    }
}

TEST_F(Backups, Import_into_a_pihole_that_is_stopped_says_that_it_does_not_answer)
{
    const QString path = exported("later.zip");
    Mac::ctl(QStringLiteral("container stop"));
    import(path);
    EXPECT_TEXT(model().notice(), "Restore failed: Pi-hole did not answer on 127.0.0.1.");
}

TEST_F(Backups, Pihole_restarts_after_an_import_and_is_used_on)
{
    importUntilPiholeRestarts(exported("restarts.zip"));
    waitUntilPageAnswers(true);
    EXPECT_TEXT(model().notice(), "Backup restored.");
    exported("after.zip");
}

TEST_F(Backups, An_import_while_pihole_restarts_says_that_it_does_not_answer)
{
    const QString path = exported("meanwhile.zip");
    importUntilPiholeRestarts(path);
    import(path);
    EXPECT_TEXT(model().notice(), "Restore failed: Pi-hole did not answer on 127.0.0.1.");
    waitUntilPageAnswers(true);
}

TEST_F(Backups, A_model_that_goes_away_while_a_panel_is_open_ends_quietly)
{
    exported("gone.zip");
    user.picks(home("other.zip"));
    user.beforeAnswering([this] { relaunch(); });
    launch(model().exportBackup());
    waitFor([this] { return user.panels().size() == 2; }, "the panel was answered");
    EXPECT_FALSE(QFile::exists(home("other.zip")));
}

} // namespace corvane::test
