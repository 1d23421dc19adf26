#include "tests/ui/screen.h"
#include "tests/ui/states.h"

#include <QTest>

namespace corvane::test {

namespace {

const QString kShop = QStringLiteral("cdn.shop.example");

/// The days after the set-up for somebody who uses no mouse: whatever a press takes away, the keys stay in sight.
class DailyKeyboard : public Screen {
protected:
    DailyKeyboard() { showRunning(m_app); }

    Repair &repair() { return *m_app.repair(); }

    void showNames()
    {
        repair().setWatching(true);
        repair().setNames({{kShop, 3, BlockedName::By::List, QStringLiteral("lists.example"), {}, true},
                           {QStringLiteral("ads.example"), 1, BlockedName::By::Upstream, {}, {}, true}});
        settle();
    }

    void tabTo(const QString &name)
    {
        for (int presses = 0; presses < 40 && focused() != name; ++presses)
            press(Qt::Key_Tab);
        ASSERT_EQ(focused(), name);
    }

    void allowShop()
    {
        repair().setMessage(QStringLiteral("cdn.shop.example is allowed always and answers now."));
        repair().setUndoName(kShop);
        repair().setPermissions({{kShop, std::nullopt}});
        settle();
    }
};

} // namespace

TEST_F(DailyKeyboard, Undo_has_the_keys_after_a_name_was_allowed)
{
    openDashboard();
    showNames();
    tabTo(QStringLiteral("allowAlways"));
    allowShop();
    EXPECT_TRUE(shows(QStringLiteral("repairUndo")));
    EXPECT_EQ(focused(), QStringLiteral("repairUndo"));
    repair().setUndoName({});
    settle();
    EXPECT_EQ(focused(), QStringLiteral("repairSwitch"));
}

TEST_F(DailyKeyboard, A_name_that_is_allowed_elsewhere_takes_no_keys)
{
    openDashboard();
    showNames();
    tabTo(QStringLiteral("repairSwitch"));
    allowShop();
    EXPECT_EQ(focused(), QStringLiteral("repairSwitch"));
}

TEST_F(DailyKeyboard, The_section_s_button_has_the_keys_after_a_name_is_blocked_again)
{
    openDashboard();
    showNames();
    allowShop();
    tabTo(QStringLiteral("blockAgain"));
    press(Qt::Key_Space);
    repair().setPermissions({});
    settle();
    EXPECT_EQ(focused(), QStringLiteral("repairSwitch"));
}

TEST_F(DailyKeyboard, The_button_of_the_pauses_has_the_keys_again_when_its_menu_has_closed)
{
    openDashboard();
    for (const Qt::Key last : {Qt::Key_Escape, Qt::Key_Return}) {
        tabTo(QStringLiteral("pauseMenuButton"));
        press(Qt::Key_Space);
        press(Qt::Key_Down);
        press(last);
        settle();
        EXPECT_FALSE(shows(QStringLiteral("pauseHalfMinute")));
        EXPECT_EQ(focused(), QStringLiteral("pauseMenuButton")) << last;
    }
}

} // namespace corvane::test
