#include "tests/ui/screen.h"
#include "tests/ui/states.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

namespace corvane::test {

namespace {

class Updates : public Screen {
protected:
    void expectBesideButton(Activity activity, const char *line, const char *words)
    {
        const QString name = QString::fromLatin1(line);
        EXPECT_FALSE(shows(name)) << line;
        m_app.setUnderWay(activity);
        EXPECT_TRUE(shows(name)) << line;
        EXPECT_EQ(textOf(name + QStringLiteral("Words")), QString::fromLatin1(words));
        m_app.setUnderWay({});
        EXPECT_FALSE(shows(name)) << line;
    }

    /// Keeps pictures of the whole page for people to look at.
    void both(const char *name)
    {
        window()->resize(980, 1300);
        settle();
        press(Qt::Key_End);
        bothPictures(QString::fromLatin1(name));
    }

    /// Runs a docker that fails as the real one does at the limit of the registry.
    void failToPull(OperationRunner &runner, const QString &title)
    {
        const QTemporaryDir folder;
        QFile docker(folder.filePath(QStringLiteral("docker")));
        ASSERT_TRUE(docker.open(QIODevice::WriteOnly));
        docker.write("#!/bin/sh\necho 'Error response from daemon: error from registry: You have reached your "
                     "unauthenticated pull rate limit. https://www.docker.com/increase-rate-limit'\nexit 1\n");
        docker.close();
        docker.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
        CommandStep step;
        step.label = QStringLiteral("docker pull pihole/pihole:2026.10.0");
        step.exe = docker.fileName();
        runner.start(title, {step});
        ASSERT_TRUE(QTest::qWaitFor([&runner] { return runner.ended(); }));
    }
};

TEST_F(Updates, The_way_back_is_offered_only_when_there_is_one)
{
    openDashboard();
    showRunning(m_app);
    EXPECT_FALSE(shows(QStringLiteral("bringBackButton")));
    m_app.setWayBack(QStringLiteral("2026.09.0"));
    EXPECT_TRUE(reads(QStringLiteral("Bring version 2026.09.0 back")));
    EXPECT_TRUE(enabled(QStringLiteral("bringBackButton")));
    m_app.setUnderWay(Activity::Update);
    EXPECT_FALSE(enabled(QStringLiteral("bringBackButton")));
}

TEST_F(Updates, What_differs_from_the_pinned_version_stands_below_it)
{
    openDashboard();
    EXPECT_FALSE(shows(QStringLiteral("versionNote")));
    m_app.setNotes({{QStringLiteral("version"), QStringLiteral("The container is of version 2026.08.0.")}});
    EXPECT_EQ(textOf(QStringLiteral("versionNote")), QStringLiteral("The container is of version 2026.08.0."));
}

TEST_F(Updates, What_is_being_prepared_stands_beside_its_button)
{
    openDashboard();
    expectBesideButton(Activity::Update, "updateUnderWay", "Saving a backup first...");
    expectBesideButton(Activity::BringBack, "updateUnderWay", "Getting ready...");
    expectBesideButton(Activity::ExportBackup, "backupUnderWay", "Saving a backup...");
    expectBesideButton(Activity::ImportBackup, "backupUnderWay", "Restoring the backup...");
    openStep(3);
    expectBesideButton(Activity::StartPihole, "startUnderWay", "Getting ready...");
}

TEST_F(Updates, What_is_under_way_is_seen_in_light_and_dark)
{
    openDashboard();
    showRunning(m_app);
    m_app.setLatestTag(QStringLiteral("2026.10.0"));
    m_app.setUpdateMessage(QStringLiteral("Version 2026.10.0 is available (you have 2026.09.0)."));
    m_app.setUnderWay(Activity::Update);
    both("update-saves-a-backup");
    m_app.setUnderWay(Activity::ExportBackup);
    both("backup-under-way");
    m_app.setUnderWay(Activity::ImportBackup);
    both("restore-under-way");
    m_app.setUnderWay({});
    openStep(3);
    m_app.setPasswordInput(QStringLiteral("correct-horse-9"));
    m_app.setDockerWorks(true);
    m_app.setUnderWay(Activity::StartPihole);
    both("start-under-way");
}

TEST_F(Updates, The_way_back_and_a_failure_are_seen_in_light_and_dark)
{
    openDashboard();
    showRunning(m_app);
    m_app.setWayBack(QStringLiteral("2026.09.0"));
    m_app.setNotes({{QStringLiteral("version"), QStringLiteral("There is no container of Pi-hole at the moment.")}});
    failToPull(*m_app.maintOp(), QStringLiteral("Updating Pi-hole to 2026.10.0"));
    EXPECT_TRUE(reads(QStringLiteral("You have reached your unauthenticated pull rate limit.")));
    both("way-back");
    failToPull(*m_app.startOp(), QStringLiteral("Starting Pi-hole"));
    openStep(3);
    both("start-failed");
}

} // namespace

} // namespace corvane::test
