#include "dns/dns_backup.h"
#include "dns/restore_script.h"
#include "tests/sentences/on_screen.h"

#include <QDir>

namespace corvane::test {

namespace {

const char *const kScript = "Even without Corvane, this script puts your old DNS servers back. Open it in Finder:";

/// What is said of the script that restores without Corvane, and of the report.
class WithoutCorvane : public OnScreen {
protected:
    void beginWithScript(const char *state)
    {
        begin(state);
        ASSERT_TRUE(DNSBackup::store({{QStringLiteral("Wi-Fi"), {QStringLiteral("9.9.9.9")}}}));
        run(model().showRestoreScript());
    }
};

} // namespace

TEST_F(WithoutCorvane, The_last_step_says_where_the_script_stands)
{
    beginWithScript("protected");
    openStep(8);
    EXPECT_TRUE(appear({kScript, qPrintable(RestoreScript::file()), "Show in Finder"}));
}

TEST_F(WithoutCorvane, The_banners_details_say_the_same)
{
    beginWithScript("dead");
    openDashboard();
    EXPECT_TRUE(appears("Without Corvane"));
    click(QStringLiteral("bannerDetailsHeader"));
    EXPECT_TRUE(appear({kScript, qPrintable(RestoreScript::file()), "Show in Finder"}));
}

TEST_F(WithoutCorvane, A_report_is_shown_before_it_is_saved)
{
    begin("protected");
    openSettings();
    EXPECT_TRUE(appear(
        {"Save a report...", "For whoever helps you. You read it before it is saved. Corvane sends it nowhere."}));
    click(QStringLiteral("makeReportButton"));
    EXPECT_TRUE(appear({"This is what is saved",
                        "Names of sites, networks and people, addresses and passwords are taken out. Look whether "
                        "anything is left that you do not want to show.",
                        "Close", "Save..."}));
    click(QStringLiteral("saveReportButton"));
    chooseFile(QStringLiteral("/nowhere/report.txt"));
    EXPECT_TRUE(appearsWithReason("The report could not be saved: "));
    click(QStringLiteral("saveReportButton"));
    chooseFile(QDir::home().filePath(QStringLiteral("report.txt")));
    EXPECT_TRUE(appears("The report is saved."));
    EXPECT_TRUE(eventually([this] { return !shows(QStringLiteral("reportText")); }));
}

} // namespace corvane::test
