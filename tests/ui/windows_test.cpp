#include "tests/ui/screen.h"
#include "tests/ui/states.h"
#include "ui/dot.h"
#include "ui/menu_content.h"

#include <QQmlEngine>
#include <QSignalSpy>
#include <QTest>

namespace corvane {

namespace {

class WindowsAndMenu : public Screen {
protected:
    [[nodiscard]] QStringList menuTexts()
    {
        MenuContent menu(m_app, m_commands, {[] {}, [] {}});
        QStringList texts;
        for (const QAction *action : menu.actions())
            texts << (action->isSeparator() ? QStringLiteral("---") : action->text());
        return texts;
    }
};

TEST_F(WindowsAndMenu, The_main_window_exists_at_most_once)
{
    openDashboard();
    const QQuickWindow *first = m_windows.main();
    EXPECT_EQ(first->title(), QStringLiteral("Corvane"));
    EXPECT_EQ(first->minimumSize(), QSize(860, 620));
    m_windows.openMain();
    EXPECT_EQ(m_windows.main(), first);
}

TEST_F(WindowsAndMenu, A_closed_window_is_given_back_and_opens_again)
{
    openDashboard();
    const QPointer<QQuickWindow> first = m_windows.main();
    press(Qt::Key_W, Qt::ControlModifier);
    EXPECT_TRUE(QTest::qWaitFor([&] { return first.isNull(); }));
    EXPECT_FALSE(m_windows.main());
    openDashboard();
    EXPECT_TRUE(shows(QStringLiteral("statusLine")));
}

TEST_F(WindowsAndMenu, Views_follow_the_model_after_the_engine_has_tidied_up)
{
    openStep(2);
    qmlEngine(window())->collectGarbage();
    m_app.setDockerWorks(true);
    settle();
    EXPECT_EQ(find(QStringLiteral("step3"))->property("badge").value<Badge>().spoken, QStringLiteral("done"));
}

TEST_F(WindowsAndMenu, Shortcuts_open_Settings_and_ask_to_quit)
{
    openDashboard();
    press(Qt::Key_Comma, Qt::ControlModifier);
    EXPECT_TRUE(m_windows.settings());
    lookAt(m_windows.main());
    QSignalSpy quit(&m_windows, &Windows::quitRequested);
    m_windows.main()->requestActivate();
    ASSERT_TRUE(QTest::qWaitForWindowActive(m_windows.main()));
    press(Qt::Key_Q, Qt::ControlModifier);
    lookAt(nullptr);
    EXPECT_EQ(quit.size(), 1);
}

TEST_F(WindowsAndMenu, The_menu_has_the_status_and_the_everyday_actions)
{
    EXPECT_EQ(menuTexts(), (QStringList{QStringLiteral("Checking Pi-hole..."), QStringLiteral("---"),
                                        QStringLiteral("Open dashboard"), QStringLiteral("Pause blocking 5 minutes"),
                                        QStringLiteral("Start Pi-hole"), QStringLiteral("---"),
                                        QStringLiteral("Open window"), QStringLiteral("Quit Corvane")}));
}

TEST_F(WindowsAndMenu, The_menu_follows_the_status)
{
    showPaused(m_app, 60);
    const QStringList texts = menuTexts();
    EXPECT_EQ(texts.at(0), QStringLiteral("Pi-hole is answering and this Mac uses it"));
    EXPECT_EQ(texts.at(3), QStringLiteral("Resume blocking"));
    EXPECT_EQ(texts.at(4), QStringLiteral("Stop Pi-hole"));
}

TEST_F(WindowsAndMenu, An_open_menu_stays_as_it_is)
{
    MenuContent menu(m_app, m_commands, {[] {}, [] {}});
    menu.popup({});
    const QAction *pause = menu.actions().at(3);
    showPaused(m_app, 60);
    EXPECT_EQ(menu.actions().at(3), pause);
    menu.close();
    menu.popup({});
    EXPECT_EQ(menu.actions().at(3)->text(), QStringLiteral("Resume blocking"));
    menu.close();
}

TEST_F(WindowsAndMenu, The_status_line_of_the_menu_cannot_be_chosen)
{
    MenuContent menu(m_app, m_commands, {[] {}, [] {}});
    EXPECT_FALSE(menu.actions().first()->isEnabled());
}

TEST_F(WindowsAndMenu, The_menu_opens_the_window_and_quits)
{
    int opened = 0;
    int quit = 0;
    MenuContent menu(m_app, m_commands, {[&] { ++opened; }, [&] { ++quit; }});
    menu.actions().at(6)->trigger();
    menu.actions().at(7)->trigger();
    EXPECT_EQ(opened, 1);
    EXPECT_EQ(quit, 1);
}

class Dot : public testing::TestWithParam<double> {};

TEST_P(Dot, Is_a_circle_of_12_points_in_16)
{
    const double scale = GetParam();
    const QImage image = dot(MenuIcon::Active, scale);
    EXPECT_EQ(image.size(), QSize(16, 16) * scale);
    const auto alpha = [&](double x, double y) {
        return qAlpha(image.pixel(static_cast<int>(x * scale), static_cast<int>(y * scale)));
    };
    EXPECT_EQ(alpha(8, 8), 255);
    EXPECT_EQ(alpha(3, 8), 255);
    EXPECT_EQ(alpha(1, 8), 0);
    EXPECT_EQ(alpha(14.5, 8), 0);
    EXPECT_EQ(alpha(2, 2), 0);
}

INSTANTIATE_TEST_SUITE_P(Scales, Dot, testing::Values(1.0, 2.0, 3.0));

TEST(DotColor, Tells_the_states_apart_and_shares_one_gray)
{
    const auto color = [](MenuIcon icon) { return dot(icon, 1).pixelColor(8, 8); };
    const QColor green = color(MenuIcon::Active);
    EXPECT_GT(green.green(), green.red());
    EXPECT_GT(color(MenuIcon::NotUsed).red(), color(MenuIcon::NotUsed).blue());
    EXPECT_GT(color(MenuIcon::NotUsed).green(), color(MenuIcon::NotAnswering).green());
    EXPECT_GT(color(MenuIcon::NotAnswering).red(), 200);
    EXPECT_EQ(color(MenuIcon::Stopped), color(MenuIcon::Unknown));
}

} // namespace

} // namespace corvane
