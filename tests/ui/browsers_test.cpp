#include "tests/ui/screen.h"
#include "tests/ui/states.h"

#include <QTest>

namespace corvane::test {

namespace {

const QString kRule = QStringLiteral("browserRule");

/// How it is shown whether browsers stay with Pi-hole.
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
                browser.detail = QStringLiteral("What was found in this browser's own settings is so and so.");
        }
        m_app.setBrowsers(browsers);
        m_app.setResolverReport(ResolverReport{{QStringLiteral("127.0.0.1"), QStringLiteral("1.1.1.1")}, true, {}});
        m_app.setBrowserRule(rule);
        m_app.setFirefoxToldOff(true);
    }

    /// The remark as it is shown, and as it was decided.
    [[nodiscard]] QString remarkOf(const char *browser) const
    {
        return textOf(QStringLiteral("browser_%1Remark").arg(QLatin1String(browser)));
    }
    [[nodiscard]] QString noteOf(const char *browser)
    {
        const RowList &rows = *m_looks.browsers();
        for (int i = 0; i < rows.count(); ++i) {
            const Row row = rows.data(rows.index(i), Qt::UserRole).value<Row>();
            if (row.id == QLatin1String(browser)) return row.note;
        }
        return {};
    }
};

} // namespace

TEST_F(BrowserScreens, The_rule_is_told_in_one_line_in_step_6_and_on_the_dashboard)
{
    openStep(5);
    EXPECT_FALSE(shows(kRule));
    showServices(m_app);
    showSetUp(BrowserRule::InPlace);
    EXPECT_EQ(textOf(kRule), m_looks.browserRuleText());
    bothPictures(QStringLiteral("step6-browser-rule"));
    openDashboard();
    EXPECT_EQ(textOf(kRule), m_looks.browserRuleText());
    bothPictures(QStringLiteral("dashboard-browser-rule"));
}

TEST_F(BrowserScreens, The_banner_tells_what_an_outage_does_to_browsers)
{
    openStep(1);
    showSetUp(BrowserRule::Interrupted);
    showUsedButDead(m_app);
    EXPECT_EQ(textOf(QStringLiteral("bannerBrowserRule")), m_looks.browserRuleText());
    openDashboard();
    bothPictures(QStringLiteral("banner-browser-rule"));
    EXPECT_FALSE(shows(kRule)) << "the banner above says it";
    m_app.setBannerDismissed(true);
    EXPECT_TRUE(shows(kRule));
}

TEST_F(BrowserScreens, Badge_and_note_follow_the_rule)
{
    openStep(6);
    showSetUp(BrowserRule::InPlace);
    EXPECT_EQ(remarkOf("brave"), noteOf("brave"));
    const QString kept = noteOf("brave");
    bothPictures(QStringLiteral("step7-kept"));
    m_app.setBrowserRule(BrowserRule::Refused);
    EXPECT_EQ(remarkOf("brave"), noteOf("brave"));
    EXPECT_NE(noteOf("brave"), kept);
    bothPictures(QStringLiteral("step7-goes-past"));
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
    EXPECT_EQ(remarkOf("chrome"), noteOf("chrome"));
    bothPictures(QStringLiteral("step7-tested"));
    openStep(7);
    EXPECT_EQ(textOf(QStringLiteral("provedBrowsers")), m_looks.provedBrowsers());
    bothPictures(QStringLiteral("step8-proved"));
}

} // namespace corvane::test
