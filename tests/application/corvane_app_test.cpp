#include "exec/background.h"
#include "tests/flows/mac.h"
#include "tests/ui/driver.h"
#include "tests/ui/qt_warnings.h"
#include "ui/corvane_app.h"

#include <QApplication>
#include <QMenu>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

namespace corvane::test {

namespace {

using test::Mac;

constexpr int kStillRuns = 77;

/// The whole application in a simulated Mac, as main() makes it.
class Application : public testing::Test, protected Driver {
protected:
    void start(const char *state)
    {
        Mac::reset(QString::fromLatin1(state));
        m_app = std::make_unique<CorvaneApp>();
        m_app->start();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(window()));
    }

    void TearDown() override
    {
        m_app.reset();
        waitForWorkers(std::chrono::minutes(1));
        EXPECT_TRUE(QtWarnings::all().isEmpty()) << qPrintable(QtWarnings::all().join(u'\n'));
    }

    [[nodiscard]] static QList<QQuickWindow *> windows()
    {
        QList<QQuickWindow *> shown;
        for (QWindow *window : QGuiApplication::topLevelWindows()) {
            if (auto *view = qobject_cast<QQuickWindow *>(window); view && view->isVisible()) shown << view;
        }
        return shown;
    }
    /// The question when there is one, else the first window.
    [[nodiscard]] QQuickWindow *window() const override
    {
        const QList<QQuickWindow *> shown = windows();
        for (QQuickWindow *window : shown) {
            if (window->modality() == Qt::ApplicationModal) return window;
        }
        return shown.isEmpty() ? nullptr : shown.first();
    }

    [[nodiscard]] static QStringList menu()
    {
        QStringList items;
        for (const QAction *action : menuActions())
            items << action->text();
        return items;
    }
    static bool canChoose(const char *item)
    {
        return std::ranges::any_of(menuActions(), [&](const QAction *action) {
            return action->text() == QString::fromLatin1(item) && action->isEnabled();
        });
    }
    static void choose(const char *item)
    {
        for (QAction *action : menuActions()) {
            if (action->text() == QString::fromLatin1(item)) return action->trigger();
        }
        FAIL() << "not in the menu: " << item;
    }
    void closeWindow()
    {
        window()->close();
        EXPECT_TRUE(QTest::qWaitFor([] { return windows().isEmpty(); }));
    }

    /// Runs the program until it ends by itself, and answers with its exit status; `kStillRuns` when it does not end.
    [[nodiscard]] static int ends(int withinMilliseconds)
    {
        QTimer::singleShot(withinMilliseconds, qApp, [] { QCoreApplication::exit(kStillRuns); });
        return QApplication::exec();
    }

    /// Begins an installation that does not come to its end by itself.
    void beginToInstall()
    {
        Mac::ctl({QStringLiteral("fault"), QStringLiteral("brew"), QStringLiteral("hang"), QStringLiteral("--when"),
                  QStringLiteral("install *")});
        click(QStringLiteral("step3"));
        EXPECT_TRUE(QTest::qWaitFor([this] { return enabled(QStringLiteral("installButton")); }));
        click(QStringLiteral("installButton"));
        EXPECT_TRUE(QTest::qWaitFor([this] { return shows(QStringLiteral("installLogCancel")); }));
    }

private:
    static QList<QAction *> menuActions()
    {
        for (QWidget *widget : QApplication::topLevelWidgets()) {
            if (auto *menu = qobject_cast<MenuContent *>(widget)) return menu->actions();
        }
        return {};
    }

    QtWarnings m_warnings;
    std::unique_ptr<CorvaneApp> m_app;
};

TEST_F(Application, Opens_its_window_and_says_what_it_sees)
{
    start("protected");
    EXPECT_EQ(window()->title(), QStringLiteral("Corvane"));
    EXPECT_TRUE(QTest::qWaitFor(
        [] { return menu().value(0) == QStringLiteral("Pi-hole is answering and this Mac uses it"); }, 20'000));
    EXPECT_TRUE(menu().contains(QStringLiteral("Stop Pi-hole")));
}

TEST_F(Application, Has_one_main_window_however_often_it_is_opened)
{
    start("homebrew");
    QQuickWindow *first = window();
    choose("Open window");
    EXPECT_EQ(windows(), QList<QQuickWindow *>{first});
    closeWindow();
    choose("Open window");
    choose("Open window");
    EXPECT_EQ(windows().size(), 1);
    EXPECT_TRUE(reads(QStringLiteral("What this wizard will do")));
}

TEST_F(Application, An_action_of_the_menu_that_works_opens_no_window)
{
    start("protected");
    EXPECT_TRUE(QTest::qWaitFor([] { return menu().contains(QStringLiteral("Stop Pi-hole")); }, 20'000));
    closeWindow();
    choose("Stop Pi-hole");
    EXPECT_TRUE(QTest::qWaitFor([] { return canChoose("Start Pi-hole"); }, 20'000));
    choose("Start Pi-hole");
    EXPECT_TRUE(QTest::qWaitFor([] { return canChoose("Stop Pi-hole"); }, 60'000));
    QTest::qWait(50);
    EXPECT_TRUE(windows().isEmpty());
}

TEST_F(Application, An_action_of_the_menu_that_fails_opens_the_window_that_says_why)
{
    start("protected");
    EXPECT_TRUE(QTest::qWaitFor([] { return menu().contains(QStringLiteral("Stop Pi-hole")); }, 20'000));
    closeWindow();
    Mac::ctl({QStringLiteral("fault"), QStringLiteral("docker"), QStringLiteral("fail"), QStringLiteral("--when"),
              QStringLiteral("stop *")});
    choose("Stop Pi-hole");
    EXPECT_TRUE(QTest::qWaitFor([] { return windows().size() == 1; }, 20'000));
    EXPECT_FALSE(textOf(QStringLiteral("startMessage")).isEmpty());
}

TEST_F(Application, Goes_on_in_the_menu_bar_when_its_last_window_closes)
{
    start("running");
    QTimer::singleShot(0, qApp, [this] { window()->close(); });
    EXPECT_EQ(ends(300), kStillRuns);
    EXPECT_TRUE(windows().isEmpty());
    EXPECT_TRUE(QTest::qWaitFor(
        [] { return menu().value(0) == QStringLiteral("Pi-hole is answering, but this Mac does not use it"); },
        20'000));
}

TEST_F(Application, Quitting_ends_it_and_leaves_Pi_hole_and_the_DNS_alone)
{
    start("protected");
    EXPECT_TRUE(QTest::qWaitFor([] { return menu().contains(QStringLiteral("Stop Pi-hole")); }, 20'000));
    QTimer::singleShot(0, qApp, [] { choose("Quit Corvane"); });
    EXPECT_EQ(ends(20'000), 0);
    for (const QString &call : Mac::calls(QStringLiteral("docker")))
        EXPECT_FALSE(call.startsWith(QStringLiteral("stop")) || call.startsWith(QStringLiteral("rm")))
            << qPrintable(call);
    for (const QString &call : Mac::calls(QStringLiteral("networksetup")))
        EXPECT_FALSE(call.startsWith(QStringLiteral("-set"))) << qPrintable(call);
    EXPECT_EQ(Mac::prompts(), 0);
}

TEST_F(Application, Asks_before_it_quits_in_the_middle_of_a_set_up)
{
    start("homebrew");
    beginToInstall();
    closeWindow();
    choose("Quit Corvane");
    choose("Quit Corvane");
    ASSERT_EQ(windows().size(), 1) << "the question stands alone, and once";
    EXPECT_EQ(textOf(QStringLiteral("alertHeading")), QStringLiteral("Quit while Corvane is still working?"));
    EXPECT_EQ(textOf(QStringLiteral("alertMessage")),
              QStringLiteral("The step under way is stopped where it is. You can run it again later."));
    click(QStringLiteral("alertReject"));
    EXPECT_EQ(ends(300), kStillRuns);
    choose("Open window");
    EXPECT_TRUE(shows(QStringLiteral("installLogCancel"))) << "the installation goes on";
}

TEST_F(Application, Quitting_in_the_middle_of_a_set_up_ends_what_it_had_begun)
{
    start("homebrew");
    beginToInstall();
    press(Qt::Key_Q, Qt::ControlModifier);
    ASSERT_EQ(textOf(QStringLiteral("alertAccept")), QStringLiteral("Quit"));
    QTimer::singleShot(0, qApp, [this] { click(QStringLiteral("alertAccept")); });
    EXPECT_EQ(ends(20'000), 0);
    const auto brewRuns = [] {
        const QList<QJsonObject> calls = Mac::journal(QStringLiteral("brew"));
        return !calls.isEmpty() && calls.last().value(QStringLiteral("end")).isNull();
    };
    EXPECT_TRUE(QTest::qWaitFor([&] { return !brewRuns(); }, 20'000));
}

TEST_F(Application, Asks_before_it_quits_in_the_middle_of_what_is_no_operation)
{
    start("protected");
    EXPECT_TRUE(QTest::qWaitFor([] { return menu().contains(QStringLiteral("Stop Pi-hole")); }, 20'000));
    Mac::ctl({QStringLiteral("fault"), QStringLiteral("docker"), QStringLiteral("hang"), QStringLiteral("--when"),
              QStringLiteral("stop *")});
    choose("Stop Pi-hole");
    closeWindow();
    choose("Quit Corvane");
    ASSERT_EQ(windows().size(), 1);
    EXPECT_EQ(textOf(QStringLiteral("alertHeading")), QStringLiteral("Quit while Corvane is still working?"));
    QTimer::singleShot(0, qApp, [this] { click(QStringLiteral("alertAccept")); });
    EXPECT_EQ(ends(20'000), 0);
}

} // namespace

} // namespace corvane::test
