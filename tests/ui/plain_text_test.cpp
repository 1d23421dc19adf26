#include "tests/ui/screen.h"
#include "tests/ui/states.h"

#include <QQuickItem>
#include <QTest>

namespace corvane::test {

namespace {

/// Names of network services and what tools print may look like markup.
class PlainText : public Screen {
protected:
    void expectNoMarkup(const QString &screen)
    {
        int texts = 0;
        for (const QQuickItem *item : itemsOf(window()->contentItem())) {
            const QVariant format = item->property("textFormat");
            if (!format.isValid()) continue;
            ++texts;
            EXPECT_EQ(format.toInt(), Qt::PlainText)
                << qPrintable(screen) << ": " << qPrintable(item->property("text").toString());
        }
        EXPECT_GT(texts, 5) << qPrintable(screen);
    }
};

TEST_F(PlainText, Is_all_that_any_screen_shows)
{
    showChecks(m_app, true);
    showPiholeTests(m_app, false);
    showBrowsers(m_app);
    for (int step = 0; step < kStepCount; ++step) {
        openStep(step);
        expectNoMarkup(QStringLiteral("step %1").arg(step + 1));
    }
    showUsedButDead(m_app);
    openDashboard();
    click(QStringLiteral("settingsButton"));
    expectNoMarkup(QStringLiteral("dashboard and sheet"));
}

TEST_F(PlainText, Is_what_a_network_services_name_is)
{
    openStep(5);
    m_app.setServices({{QStringLiteral("<b>Home</b><img src=\"http://192.0.2.1/x.png\">"), {}, false}});
    QTest::qWait(20);
    bool found = false;
    for (const QQuickItem *item : itemsOf(window()->contentItem())) {
        if (!item->property("text").toString().startsWith(QLatin1String("<b>Home"))) continue;
        if (!item->property("textFormat").isValid()) continue;
        EXPECT_EQ(item->property("textFormat").toInt(), Qt::PlainText);
        found = true;
    }
    EXPECT_TRUE(found);
}

} // namespace

} // namespace corvane::test
