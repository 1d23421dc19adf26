#include "tests/ui/screen.h"
#include "tests/ui/states.h"

#include <QTest>

namespace corvane::test {

namespace {

const QString kRule = QStringLiteral("browserRule");
const QString kKept =
    QStringLiteral("A rule in Pi-hole keeps Chrome, Edge and Brave from going over to the secure DNS of 1.1.1.1.");

/// How it is told whether browsers stay with Pi-hole.
class BrowserScreens : public Screen {
protected:
    /// A Mac that is set up with the backup server, and browsers of which two are on their defaults.
    void showSetUp(BrowserRule rule)
    {
        showRunning(m_app);
        showBrowsers(m_app);
        QList<BrowserInfo> browsers = m_app.browsers();
        for (BrowserInfo &browser : browsers) {
            browser.decidesItself = browser.id == u"brave" || browser.id == u"firefox";
            if (browser.id == u"brave")
                browser.detail = QStringLiteral("Secure DNS is on 'automatic': it is used only if the system DNS "
                                                "server supports it, so Pi-hole stays in charge.");
        }
        m_app.setBrowsers(browsers);
        m_app.setResolverReport(ResolverReport{{QStringLiteral("127.0.0.1"), QStringLiteral("1.1.1.1")}, true, {}});
        m_app.setBrowserRule(rule);
        m_app.setFirefoxToldOff(true);
    }

    void both(const QString &name)
    {
        for (const bool dark : {false, true}) {
            setDark(dark);
            settle();
            picture(name + (dark ? QStringLiteral("-dark") : QStringLiteral("-light")));
        }
        setDark(false);
    }
};

} // namespace

TEST_F(BrowserScreens, The_rule_is_told_in_one_line_in_step_6_and_on_the_dashboard)
{
    openStep(5);
    EXPECT_FALSE(shows(kRule));
    showServices(m_app);
    showSetUp(BrowserRule::InPlace);
    EXPECT_EQ(textOf(kRule), kKept);
    both(QStringLiteral("step6-browser-rule"));
    openDashboard();
    EXPECT_EQ(textOf(kRule), kKept);
    both(QStringLiteral("dashboard-browser-rule"));
}

TEST_F(BrowserScreens, The_banner_tells_what_an_outage_does_to_browsers)
{
    openStep(1);
    showSetUp(BrowserRule::Interrupted);
    showUsedButDead(m_app);
    EXPECT_TRUE(textOf(QStringLiteral("bannerBrowserRule")).startsWith(QStringLiteral("While Pi-hole is silent")));
    openDashboard();
    both(QStringLiteral("banner-browser-rule"));
    EXPECT_FALSE(shows(kRule)) << "the banner above says it";
    m_app.setBannerDismissed(true);
    EXPECT_TRUE(shows(kRule));
}

TEST_F(BrowserScreens, Badge_and_note_follow_the_rule)
{
    openStep(6);
    showSetUp(BrowserRule::InPlace);
    EXPECT_EQ(textOf(QStringLiteral("browser_braveRemark")),
              QStringLiteral("A rule in Pi-hole keeps it from going over to the secure DNS of 1.1.1.1."));
    both(QStringLiteral("step7-kept"));
    m_app.setBrowserRule(BrowserRule::Refused);
    EXPECT_TRUE(textOf(QStringLiteral("browser_braveRemark")).contains(QStringLiteral("past Pi-hole")));
    both(QStringLiteral("step7-goes-past"));
}

TEST_F(BrowserScreens, A_remark_stands_beneath_the_text_that_it_belongs_to)
{
    openStep(6);
    showSetUp(BrowserRule::InPlace);
    settle();
    const QQuickItem *remark = find(QStringLiteral("browser_braveRemark"));
    const QQuickItem *box = find(QStringLiteral("browser_brave"));
    ASSERT_TRUE(remark && box);
    for (const QQuickItem *item : itemsOf(find(QStringLiteral("browser_brave")))) {
        if (item->property("text").toString() == QStringLiteral("Brave")) {
            EXPECT_EQ(remark->mapToItem(box, QPointF()).x(), item->mapToItem(box, QPointF()).x());
        }
    }
}

TEST_F(BrowserScreens, Every_browser_that_is_there_can_be_tested_one_at_a_time)
{
    openStep(6);
    showSetUp(BrowserRule::InPlace);
    EXPECT_TRUE(enabled(QStringLiteral("browser_chromeTestButton")));
    EXPECT_TRUE(enabled(QStringLiteral("browser_safariTestButton")));
    EXPECT_FALSE(enabled(QStringLiteral("browser_edgeTestButton"))) << "it is not installed";
    m_app.setBusy({QStringLiteral("browserproof")});
    EXPECT_FALSE(enabled(QStringLiteral("browser_chromeTestButton")));
    EXPECT_TRUE(enabled(QStringLiteral("browserTestButton"))) << "the test of the default browser is another one";
    m_app.setBusy({});
    m_app.setBrowserProofs(
        {{QStringLiteral("brave"), BrowserProof::AsksPihole}, {QStringLiteral("chrome"), BrowserProof::NeverAsks}});
    EXPECT_EQ(
        textOf(QStringLiteral("browser_chromeRemark")),
        QStringLiteral("Tested: Google Chrome did not ask Pi-hole. It may be using its own secure DNS, a VPN or a "
                       "proxy."));
    both(QStringLiteral("step7-tested"));
    openStep(7);
    EXPECT_EQ(textOf(QStringLiteral("provedBrowsers")), QStringLiteral("Proved to use Pi-hole: Brave"));
    both(QStringLiteral("step8-proved"));
}

} // namespace corvane::test
