#include "tests/ui/screen.h"
#include "tests/ui/states.h"

namespace corvane {

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

} // namespace

} // namespace corvane
