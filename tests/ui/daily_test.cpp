#include "tests/ui/screen.h"
#include "tests/ui/states.h"
#include "ui/pause_countdown.h"

#include <QTest>

namespace corvane::test {

namespace {

/// What is used on the days after the set-up: pauses, and fresh lists.
class Daily : public Screen {
protected:
    void showLists(qint64 age)
    {
        PiholeSummary summary = *m_app.summary();
        summary.domainsBlocked = 150'025;
        summary.listsRun = QDateTime::currentSecsSinceEpoch() - age;
        m_app.setSummary(summary);
        settle();
    }
};

constexpr qint64 kDay = 86'400;

} // namespace

TEST_F(Daily, A_pause_is_counted_down_beside_its_buttons)
{
    openDashboard();
    showRunning(m_app);
    EXPECT_FALSE(shows(QStringLiteral("pauseLeft")));
    showPaused(m_app, 298.5);
    EXPECT_EQ(textOf(QStringLiteral("pauseLeft")), QStringLiteral("Paused: 4:59 left"));
    QTRY_COMPARE(textOf(QStringLiteral("pauseLeft")), QStringLiteral("Paused: 4:58 left"));
    m_app.setBlocking(PiholeBlocking{true, std::nullopt});
    settle();
    EXPECT_FALSE(shows(QStringLiteral("pauseLeft")));
}

TEST_F(Daily, Nothing_ticks_while_nobody_looks_or_no_pause_is_under_way)
{
    PauseCountdown countdown;
    countdown.setApp(&m_app);
    showPaused(m_app, 100);
    EXPECT_FALSE(countdown.ticks());
    EXPECT_EQ(countdown.left(), QStringLiteral("1:40"));
    countdown.setLooked(true);
    EXPECT_TRUE(countdown.ticks());
    m_app.setBlocking(PiholeBlocking{false, std::nullopt});
    EXPECT_FALSE(countdown.ticks()) << "off without an end";
    EXPECT_EQ(countdown.left(), QString());
    showPaused(m_app, 100);
    EXPECT_TRUE(countdown.ticks());
    countdown.setLooked(false);
    EXPECT_FALSE(countdown.ticks());
}

TEST_F(Daily, What_pihole_says_counts_more_than_what_was_counted)
{
    PauseCountdown countdown;
    countdown.setApp(&m_app);
    showPaused(m_app, 100);
    m_app.setBlocking(PiholeBlocking{false, 3600.0});
    EXPECT_EQ(countdown.left(), QStringLiteral("1:00:00"));
}

TEST_F(Daily, The_other_lengths_stand_in_a_menu_beside_the_button)
{
    openDashboard();
    showRunning(m_app);
    click(QStringLiteral("pauseMenuButton"));
    settle();
    EXPECT_TRUE(shows(QStringLiteral("pauseHalfMinute")));
    EXPECT_TRUE(shows(QStringLiteral("pauseUntilMorning")));
    picture(QStringLiteral("pause-menu"));
    click(QStringLiteral("pauseOneHour"));
    QTRY_VERIFY(m_app.apiMessage().startsWith(QStringLiteral("Could not pause blocking: ")));
}

TEST_F(Daily, The_menu_of_lengths_works_by_keyboard)
{
    openDashboard();
    showRunning(m_app);
    find(QStringLiteral("pauseMenuButton"))->forceActiveFocus(Qt::TabFocusReason);
    press(Qt::Key_Return);
    settle();
    ASSERT_TRUE(shows(QStringLiteral("pauseHalfMinute")));
    press(Qt::Key_Down);
    press(Qt::Key_Return);
    QTRY_VERIFY(m_app.apiMessage().startsWith(QStringLiteral("Could not pause blocking: ")));
}

TEST_F(Daily, Lists_tell_how_many_names_they_hold_and_how_old_they_are)
{
    openDashboard();
    showRunning(m_app);
    showLists(3 * kDay);
    EXPECT_EQ(textOf(QStringLiteral("listsText")), QStringLiteral("150,025 blocked names, refreshed 3 days ago."));
    EXPECT_FALSE(shows(QStringLiteral("listsHint")));
    showLists(9 * kDay);
    EXPECT_TRUE(textOf(QStringLiteral("listsHint")).startsWith(QStringLiteral("The lists are more than 8 days old.")));
    EXPECT_TRUE(enabled(QStringLiteral("refreshListsButton")));
}

TEST_F(Daily, A_refresh_shows_how_far_it_is_and_how_it_ended)
{
    for (const bool dark : {false, true}) {
        setDark(dark);
        openDashboard();
        showRunning(m_app);
        showLists(9 * kDay);
        m_app.setNotes({});
        m_app.setBusy({QStringLiteral("lists")});
        m_app.listRun()->begin(3);
        m_app.listRun()->hear("  [i] Target: https://lists.example/hosts.txt\n  [i] Status: Pending...\n");
        EXPECT_FALSE(enabled(QStringLiteral("refreshListsButton")));
        EXPECT_EQ(textOf(QStringLiteral("listsProgress")), QStringLiteral("List 1 of 3: lists.example/hosts.txt"));
        click(QStringLiteral("listsLogHeader"));
        picture(dark ? QStringLiteral("lists-run-dark") : QStringLiteral("lists-run-light"));
        m_app.listRun()->end();
        m_app.setBusy({});
        m_app.setNotes({{QStringLiteral("lists"),
                         QStringLiteral("The block lists are loaded.\nlists.example/hosts.txt could not be fetched. "
                                        "Its old copy stays in use.")}});
        EXPECT_EQ(textOf(QStringLiteral("listsVerdict")), m_app.notes().value(QStringLiteral("lists")).toString());
        EXPECT_FALSE(shows(QStringLiteral("listsProgress")));
        click(QStringLiteral("listsLogHeader"));
        picture(dark ? QStringLiteral("lists-end-dark") : QStringLiteral("lists-end-light"));
    }
}

} // namespace corvane::test
