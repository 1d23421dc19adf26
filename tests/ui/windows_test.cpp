#include "tests/ui/screen.h"
#include "tests/ui/states.h"
#include "ui/dot.h"

#include <QQmlEngine>
#include <QScreen>
#include <QSignalSpy>
#include <QTest>

namespace corvane::test {

namespace {

using OpenWindows = Screen;

TEST_F(OpenWindows, The_main_window_exists_at_most_once)
{
    openDashboard();
    const QQuickWindow *first = m_windows.main();
    EXPECT_EQ(first->title(), QStringLiteral("Corvane"));
    EXPECT_EQ(first->minimumSize(), QSize(860, 620));
    m_windows.openMain();
    EXPECT_EQ(m_windows.main(), first);
}

TEST_F(OpenWindows, A_closed_window_is_given_back_and_opens_again)
{
    openDashboard();
    const QPointer<QQuickWindow> first = m_windows.main();
    press(Qt::Key_W, Qt::ControlModifier);
    EXPECT_TRUE(QTest::qWaitFor([&] { return first.isNull(); }));
    EXPECT_FALSE(m_windows.main());
    openDashboard();
    EXPECT_TRUE(shows(QStringLiteral("statusLine")));
}

TEST_F(OpenWindows, The_main_window_comes_back_where_it_was_and_as_large)
{
    openDashboard();
    EXPECT_EQ(window()->size(), QSize(980, 720)) << "the first time";
    window()->setGeometry(0, 50, 860, 640);
    QTest::qWait(20);
    const QPoint place = window()->position();
    m_windows.main()->close();
    openDashboard();
    EXPECT_EQ(window()->size(), QSize(860, 640));
    EXPECT_EQ(window()->position(), place);
}

TEST_F(OpenWindows, The_place_of_the_main_window_outlives_the_program)
{
    const auto windows = [this] {
        return std::make_unique<Windows>([this] { return std::make_unique<ScreenEngine>(m_app, m_looks, m_commands); },
                                         m_dialogs, m_workspace, m_settings);
    };
    auto first = windows();
    first->openMain();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(first->main()));
    first->main()->setGeometry(0, 40, 860, 650);
    QTest::qWait(20);
    const QRect frame = first->main()->geometry();
    first.reset();
    auto second = windows();
    second->openMain();
    EXPECT_EQ(second->main()->geometry(), frame);
}

TEST_F(OpenWindows, A_place_that_is_no_longer_on_a_screen_is_brought_back)
{
    m_settings.setValue(QStringLiteral("mainWindowFrame"), QStringLiteral("9000 -9000 20 20"));
    openDashboard();
    EXPECT_EQ(window()->size(), QSize(860, 620));
    EXPECT_TRUE(window()->screen()->availableGeometry().contains(window()->position()));
}

TEST_F(OpenWindows, A_minimised_window_comes_back_as_large_as_it_was)
{
    openDashboard();
    window()->setWindowStates(Qt::WindowMaximized | Qt::WindowMinimized);
    m_windows.openMain();
    EXPECT_EQ(window()->windowStates(), Qt::WindowMaximized);
    EXPECT_TRUE(window()->isVisible());
}

TEST_F(OpenWindows, A_window_that_is_asked_for_is_in_front_and_has_the_keyboard)
{
    m_workspace.activations = 0;
    bool shownAtLast = false;
    m_workspace.onActivate = [&] { shownAtLast = m_windows.main() && m_windows.main()->isVisible(); };
    m_windows.comeForward();
    EXPECT_EQ(m_workspace.activations, 2) << "before it opens, and once it is there";
    EXPECT_TRUE(shownAtLast);
    m_workspace.onActivate = {};
    m_windows.openSettings();
    ASSERT_TRUE(QTest::qWaitForWindowActive(m_windows.settings()));
    m_windows.comeForward();
    EXPECT_TRUE(QTest::qWaitForWindowActive(m_windows.main()));
}

TEST_F(OpenWindows, What_closes_the_window_closes_its_sheet_first)
{
    openDashboard();
    click(QStringLiteral("settingsButton"));
    ASSERT_TRUE(QTest::qWaitFor([this] { return shows(QStringLiteral("closeSettingsButton")); }));
    m_windows.main()->close();
    ASSERT_TRUE(m_windows.main());
    EXPECT_TRUE(m_windows.main()->isVisible());
    EXPECT_TRUE(QTest::qWaitFor([this] { return !shows(QStringLiteral("closeSettingsButton")); }));
    m_windows.main()->close();
    EXPECT_FALSE(m_windows.main());
}

TEST_F(OpenWindows, Beneath_the_sheet_nothing_can_be_used)
{
    openDashboard();
    click(QStringLiteral("settingsButton"));
    ASSERT_TRUE(QTest::qWaitFor([this] { return shows(QStringLiteral("closeSettingsButton")); }));
    EXPECT_FALSE(enabled(QStringLiteral("toggleWizardButton")));
    EXPECT_TRUE(enabled(QStringLiteral("closeSettingsButton")));
    click(QStringLiteral("closeSettingsButton"));
    EXPECT_TRUE(QTest::qWaitFor([this] { return enabled(QStringLiteral("toggleWizardButton")); }));
}

TEST_F(OpenWindows, Views_follow_the_model_after_the_engine_has_tidied_up)
{
    openStep(2);
    qmlEngine(window())->collectGarbage();
    m_app.setDockerWorks(true);
    settle();
    EXPECT_EQ(find(QStringLiteral("step3"))->property("badge").value<Badge>().spoken, QStringLiteral("done"));
}

TEST_F(OpenWindows, Shortcuts_open_Settings_and_ask_to_quit)
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

} // namespace corvane::test
