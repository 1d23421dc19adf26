#include "tests/ui/screen.h"
#include "tests/ui/states.h"

#include <QAccessible>
#include <QTest>

namespace corvane::test {

namespace {

/// The section about a site that does not load, on the dashboard.
class RepairSection : public Screen {
protected:
    RepairSection() { showRunning(m_app); }

    Repair &repair() { return *m_app.repair(); }

    /// As after the page was loaded again.
    void showNames()
    {
        using By = BlockedName::By;
        const QString list = QStringLiteral("raw.githubusercontent.com/StevenBlack/hosts/master/hosts");
        repair().setWatching(true);
        repair().setNames({{QStringLiteral("cdn.shop.example"), 3, By::List, list, {}, true},
                           {QStringLiteral("metrics.shop.example"), 1, By::List, list,
                            QStringLiteral("stats.g.doubleclick.net"), true},
                           {QStringLiteral("doh.example"), 1, By::Corvane, {}, {}, true},
                           {QStringLiteral("ads.other.example"), 12, By::Rule, QStringLiteral("^ads\\."), {}, false}});
        settle();
    }

    void showPermissions()
    {
        const QDateTime end(QDate(2026, 11, 22), QTime(15, 5));
        repair().setPermissions(
            {{QStringLiteral("cdn.shop.example"), end}, {QStringLiteral("login.bank.example"), std::nullopt}});
        repair().setMessage(
            QStringLiteral("cdn.shop.example is allowed (until 15:05) and answers now. Load the page again."));
        repair().setUndoName(QStringLiteral("cdn.shop.example"));
        settle();
    }

    QQuickItem *named(const QString &spoken)
    {
        for (QQuickItem *item : itemsOf(window()->contentItem())) {
            const QAccessibleInterface *face = QAccessible::queryAccessibleInterface(item);
            if (inSight(item) && face && face->text(QAccessible::Name) == spoken) return item;
        }
        return nullptr;
    }
};

} // namespace

TEST_F(RepairSection, Is_closed_until_it_is_asked_for)
{
    openDashboard();
    const QString offer = textOf(QStringLiteral("repairSwitch"));
    EXPECT_FALSE(shows(QStringLiteral("newNames")));
    click(QStringLiteral("repairSwitch"));
    EXPECT_TRUE(repair().watching());
    EXPECT_NE(textOf(QStringLiteral("repairSwitch")), offer);
    click(QStringLiteral("repairSwitch"));
    EXPECT_FALSE(repair().watching());
    EXPECT_EQ(textOf(QStringLiteral("repairSwitch")), offer);
}

TEST_F(RepairSection, Nobody_looks_once_the_window_has_closed)
{
    openDashboard();
    showNames();
    m_windows.main()->close();
    QTRY_VERIFY(!repair().watching());
}

TEST_F(RepairSection, Shows_new_names_with_their_reason_and_older_ones_on_demand)
{
    openDashboard();
    showNames();
    EXPECT_TRUE(reads(QStringLiteral("cdn.shop.example")));
    EXPECT_TRUE(reads(QStringLiteral("Blocked once: it leads to stats.g.doubleclick.net, which is blocked by the list "
                                     "raw.githubusercontent.com/StevenBlack/hosts/master/hosts.")));
    EXPECT_FALSE(reads(QStringLiteral("ads.other.example")));
    click(QStringLiteral("olderNamesHeader"));
    EXPECT_TRUE(reads(QStringLiteral("Blocked 12 times by your rule ^ads\\..")));
}

TEST_F(RepairSection, Offers_a_permission_for_each_name_that_it_helps)
{
    openDashboard();
    showNames();
    for (const char *button : {"Allow cdn.shop.example for 1 hour", "Allow cdn.shop.example always",
                               "Allow metrics.shop.example for 1 hour"})
        EXPECT_TRUE(named(QLatin1String(button))) << button;
    EXPECT_FALSE(named(QStringLiteral("Allow doh.example for 1 hour")));
}

TEST_F(RepairSection, A_press_asks_pihole_and_says_what_came_of_it)
{
    openDashboard();
    showNames();
    QQuickItem *allow = named(QStringLiteral("Allow cdn.shop.example for 1 hour"));
    ASSERT_TRUE(allow);
    click(*allow);
    QTRY_VERIFY(!repair().message().isEmpty());
    EXPECT_TRUE(repair().message().startsWith(QStringLiteral("Could not allow cdn.shop.example: ")))
        << repair().message().toStdString();
    EXPECT_EQ(textOf(QStringLiteral("repairMessage")), repair().message());
}

TEST_F(RepairSection, What_was_allowed_can_be_taken_back)
{
    openDashboard();
    showPermissions();
    EXPECT_TRUE(reads(QStringLiteral("Allowed until 15:05.")));
    EXPECT_TRUE(reads(QStringLiteral("Allowed always.")));
    EXPECT_TRUE(shows(QStringLiteral("repairUndo")));
    QQuickItem *again = named(QStringLiteral("Block login.bank.example again"));
    ASSERT_TRUE(again);
    click(*again);
    QTRY_VERIFY(repair().message().startsWith(QStringLiteral("Could not take the permission for login.bank.example")));
}

TEST_F(RepairSection, Says_why_there_is_nothing_to_see)
{
    openDashboard();
    repair().setWatching(true);
    EXPECT_TRUE(textOf(QStringLiteral("noNames")).startsWith(QStringLiteral("Nothing was blocked since.")));
    repair().setPrivacyLevel(1);
    EXPECT_TRUE(textOf(QStringLiteral("noNames")).contains(QStringLiteral("its privacy level is 1")));
    repair().setTrouble(QStringLiteral("It cannot be seen."));
    EXPECT_EQ(textOf(QStringLiteral("noNames")), QStringLiteral("It cannot be seen."));
}

TEST_F(RepairSection, Works_by_keyboard)
{
    openDashboard();
    showNames();
    find(QStringLiteral("repairSwitch"))->forceActiveFocus(Qt::TabFocusReason);
    bool found = false;
    for (int presses = 0; presses < 8 && !found; ++presses) {
        press(Qt::Key_Tab);
        found = focused() == QStringLiteral("allowHour");
    }
    ASSERT_TRUE(found) << focused().toStdString();
    press(Qt::Key_Return);
    QTRY_VERIFY(!repair().message().isEmpty());
}

TEST_F(RepairSection, Is_seen_in_light_and_dark)
{
    for (const bool dark : {false, true}) {
        setDark(dark);
        openDashboard();
        showNames();
        showPermissions();
        for (const QSize size : {QSize(860, 620), QSize(1400, 1300)}) {
            window()->resize(size);
            settle();
            click(QStringLiteral("repairUndo")); // scrolls it into sight
            repair().setUndoName(QStringLiteral("cdn.shop.example"));
            settle();
            picture(QStringLiteral("repair-%1-%2")
                        .arg(dark ? QStringLiteral("dark") : QStringLiteral("light"))
                        .arg(size.width()));
        }
    }
}

} // namespace corvane::test
