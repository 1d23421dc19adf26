#include "checks/browser_inspector.h"
#include "tests/support/fake_tool.h"

#include <gtest/gtest.h>

namespace corvane::test {
namespace {

QList<QStringList> callsToOpen(const BrowserInfo &browser)
{
    const FakeTool open(QStringLiteral("/usr/bin/open"), "exit 1");
    QCoro::waitFor(BrowserInspector::openSettings(browser));
    return open.calls();
}

BrowserInfo scanned(const char *id)
{
    for (const BrowserInfo &browser : BrowserInspector::scan({})) {
        if (browser.id == QString::fromLatin1(id)) return browser;
    }
    return {};
}

TEST(OpeningSettings, Opens_the_named_browser_at_its_own_page)
{
    const QStringList edge{QStringLiteral("-b"), QStringLiteral("com.microsoft.edgemac"),
                           QStringLiteral("edge://settings/privacy")};
    EXPECT_EQ(callsToOpen(scanned("edge")), QList<QStringList>{edge});
    const QStringList firefox{QStringLiteral("-b"), QStringLiteral("org.mozilla.firefox"),
                              QStringLiteral("about:preferences#privacy")};
    EXPECT_EQ(callsToOpen(scanned("firefox")), QList<QStringList>{firefox});
}

TEST(OpeningSettings, Opens_the_system_settings_for_safari)
{
    EXPECT_EQ(callsToOpen(scanned("safari")), QList<QStringList>{{QStringLiteral("x-apple.systempreferences:")}});
}

TEST(OpeningSettings, Does_nothing_for_a_browser_without_a_page)
{
    BrowserInfo other = scanned("brave");
    other.settingsURL = std::nullopt;
    EXPECT_TRUE(callsToOpen(other).isEmpty());
}

TEST(OpeningAnAddress, Goes_to_the_named_browser_and_says_whether_that_worked)
{
    const QString address = QStringLiteral("http://cv-1a2b3c.example.com/");
    const QStringList inBrave{QStringLiteral("-b"), QStringLiteral("com.brave.Browser"), address};
    for (const char *status : {"exit 0", "exit 1"}) {
        const FakeTool open(QStringLiteral("/usr/bin/open"), status);
        const bool opened = QCoro::waitFor(BrowserInspector::open(scanned("brave"), address));
        EXPECT_EQ(opened, QByteArray(status) == "exit 0");
        EXPECT_EQ(open.calls(), QList<QStringList>{inBrave});
    }
}

} // namespace
} // namespace corvane::test
