#include "tests/ui/screen.h"
#include "tests/ui/states.h"

#include <QTest>

namespace corvane::test {

namespace {

/// Where it is chosen that Pi-hole comes back by itself, and where it is shown.
class ComebackScreen : public Screen {
protected:
    void TearDown() override
    {
        lookAt(nullptr);
        Screen::TearDown();
    }

    Comeback &comeback() { return *m_app.comeback(); }
};

TEST_F(ComebackScreen, It_is_chosen_in_the_settings)
{
    openSettings();
    EXPECT_FALSE(find(QStringLiteral("startsAgainSwitch"))->property("on").toBool());
    click(QStringLiteral("startsAgainSwitch"));
    EXPECT_TRUE(comeback().startsAgain());
    EXPECT_TRUE(find(QStringLiteral("startsAgainSwitch"))->property("on").toBool());
    EXPECT_FALSE(shows(QStringLiteral("comebackHistoryBoxHeader"))) << "nothing was done yet";
    comeback().setHistory({QStringLiteral("09:12 Started again after waking, 41 s without Pi-hole."),
                           QStringLiteral("21 Nov 18:03 Not started again after Colima had stopped: three tries "
                                          "failed.")});
    click(QStringLiteral("comebackHistoryBoxHeader"));
    EXPECT_TRUE(textOf(QStringLiteral("comeback0")).startsWith(QStringLiteral("09:12 Started again")));
    bothPictures(QStringLiteral("settings-comeback"));
    click(QStringLiteral("startsAgainSwitch"));
    EXPECT_FALSE(comeback().startsAgain());
}

TEST_F(ComebackScreen, The_banner_offers_it_once_its_button_was_used)
{
    openDashboard();
    showUsedButDead(m_app);
    EXPECT_FALSE(shows(QStringLiteral("bannerStartsAgain")));
    click(QStringLiteral("startPiholeNowButton"));
    EXPECT_TRUE(QTest::qWaitFor([this] { return shows(QStringLiteral("bannerStartsAgain")); }));
    showUsedButDead(m_app);
    click(QStringLiteral("bannerStartsAgain"));
    EXPECT_TRUE(comeback().startsAgain());
    comeback().setNews(QStringLiteral("Pi-hole does not run. Corvane starts it again within 30 seconds (try 2 of 3)."));
    EXPECT_EQ(textOf(QStringLiteral("bannerComebackNews")), comeback().news());
    EXPECT_FALSE(shows(QStringLiteral("comebackNews"))) << "once is enough";
    bothPictures(QStringLiteral("banner-comeback"));
}

TEST_F(ComebackScreen, The_dashboard_tells_what_was_done)
{
    openDashboard();
    showRunning(m_app);
    EXPECT_FALSE(shows(QStringLiteral("comebackNews")));
    comeback().setNews(QStringLiteral("09:12 Started again after waking, 41 s without Pi-hole."));
    EXPECT_EQ(textOf(QStringLiteral("comebackNews")), comeback().news());
    bothPictures(QStringLiteral("dashboard-comeback"));
}

} // namespace

} // namespace corvane::test
