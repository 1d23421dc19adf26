#include "platform/application_menu.h"
#include "platform/mac/about_panel.h"
#include "platform/session.h"

#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QMenuBar>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

namespace corvane {

namespace {

bool loggingOut = false;
int processEnds = 0;
int aboutPanels = 0;

} // namespace

// The Mac's session and its panel, played.
bool platform::sessionIsEnding() { return loggingOut; }
void platform::leaveAtOnce() { ++processEnds; }
void platform::showAboutPanel() { ++aboutPanels; }

namespace {

/// The Mac's menu bar; it needs nothing but Qt and to know why it is asked to quit.
class ApplicationMenu : public testing::Test {
protected:
    [[nodiscard]] QAction *item(const QString &menuTitle, const QString &name) const
    {
        const auto *bar = dynamic_cast<QMenuBar *>(m_menu.get());
        for (const QAction *menu : bar->actions()) {
            if (menu->text() != menuTitle) continue;
            for (QAction *action : menu->menu()->actions()) {
                if (action->text() == name) return action;
            }
        }
        ADD_FAILURE() << qPrintable(menuTitle) << " has no " << qPrintable(name);
        return nullptr;
    }

    ~ApplicationMenu() override { loggingOut = false; }

    /// What the Dock, a script or the end of the session sends.
    static bool accepts(QEvent::Type type)
    {
        QEvent event(type);
        QCoreApplication::sendEvent(qApp, &event);
        return event.isAccepted();
    }

    int m_windows = 0;
    int m_settings = 0;
    int m_quits = 0;
    int m_helps = 0;
    std::function<void()> m_endWithSession = [] { FAIL() << "the session goes on"; };
    std::unique_ptr<QObject> m_menu =
        systemApplicationMenu({[this] { ++m_windows; }, [this] { ++m_settings; }, [this] { ++m_quits; },
                               [this] { m_endWithSession(); }, [this] { ++m_helps; }});
};

TEST_F(ApplicationMenu, Edit_works_on_what_has_the_focus)
{
    QLineEdit field(QStringLiteral("correct horse"));
    field.show();
    field.activateWindow();
    field.setFocus();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&field));
    item(QStringLiteral("Edit"), QStringLiteral("Select All"))->trigger();
    EXPECT_EQ(field.selectedText(), QStringLiteral("correct horse"));
    item(QStringLiteral("Edit"), QStringLiteral("Copy"))->trigger();
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("correct horse"));
    item(QStringLiteral("Edit"), QStringLiteral("Cut"))->trigger();
    EXPECT_TRUE(field.text().isEmpty());
    item(QStringLiteral("Edit"), QStringLiteral("Undo"))->trigger();
    EXPECT_EQ(field.text(), QStringLiteral("correct horse"));
    item(QStringLiteral("Edit"), QStringLiteral("Redo"))->trigger();
    EXPECT_TRUE(field.text().isEmpty());
    item(QStringLiteral("Edit"), QStringLiteral("Paste"))->trigger();
    EXPECT_EQ(field.text(), QStringLiteral("correct horse"));
}

TEST_F(ApplicationMenu, Edit_does_nothing_while_nothing_has_the_focus)
{
    item(QStringLiteral("Edit"), QStringLiteral("Copy"))->trigger();
    EXPECT_FALSE(QGuiApplication::focusObject());
}

TEST_F(ApplicationMenu, Settings_and_Quit_stand_where_the_system_wants_them)
{
    QAction *settings = item(QStringLiteral("Corvane"), QStringLiteral("Settings..."));
    EXPECT_EQ(settings->menuRole(), QAction::PreferencesRole);
    settings->trigger();
    EXPECT_EQ(m_settings, 1);
    QAction *quit = item(QStringLiteral("Corvane"), QStringLiteral("Quit Corvane"));
    EXPECT_EQ(quit->menuRole(), QAction::QuitRole);
    quit->trigger();
    EXPECT_EQ(m_quits, 1);
}

TEST_F(ApplicationMenu, Has_every_menu_that_a_Mac_user_looks_for)
{
    QStringList titles;
    for (const QAction *menu : dynamic_cast<QMenuBar *>(m_menu.get())->actions())
        titles << menu->text();
    EXPECT_EQ(titles, (QStringList{QStringLiteral("Corvane"), QStringLiteral("File"), QStringLiteral("Edit"),
                                   QStringLiteral("Window"), QStringLiteral("Help")}));
}

TEST_F(ApplicationMenu, About_shows_the_panel_of_the_system)
{
    QAction *about = item(QStringLiteral("Corvane"), QStringLiteral("About Corvane"));
    EXPECT_EQ(about->menuRole(), QAction::AboutRole);
    const int before = aboutPanels;
    about->trigger();
    EXPECT_EQ(aboutPanels, before + 1);
}

TEST_F(ApplicationMenu, Help_and_the_main_window_can_be_opened)
{
    item(QStringLiteral("Help"), QStringLiteral("Corvane Help"))->trigger();
    EXPECT_EQ(m_helps, 1);
    item(QStringLiteral("Window"), QStringLiteral("Corvane"))->trigger();
    EXPECT_EQ(m_windows, 1);
}

TEST_F(ApplicationMenu, A_window_zooms_and_back_and_closes)
{
    QWidget window;
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    item(QStringLiteral("Window"), QStringLiteral("Zoom"))->trigger();
    EXPECT_TRUE(QTest::qWaitFor([&] { return window.isMaximized(); }));
    item(QStringLiteral("Window"), QStringLiteral("Zoom"))->trigger();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !window.isMaximized(); }));
    item(QStringLiteral("Window"), QStringLiteral("Bring All to Front"))->trigger();
    item(QStringLiteral("File"), QStringLiteral("Close"))->trigger();
    EXPECT_FALSE(window.isVisible());
}

TEST_F(ApplicationMenu, The_system_can_only_ask_to_quit)
{
    EXPECT_FALSE(accepts(QEvent::Quit));
    EXPECT_EQ(m_quits, 1);
    EXPECT_EQ(processEnds, 0);
}

TEST_F(ApplicationMenu, The_end_of_the_session_is_answered_by_the_end_of_the_process)
{
    QStringList order;
    loggingOut = true;
    m_endWithSession = [&] {
        order << QStringLiteral("told");
        QTimer::singleShot(50, qApp, [&] {
            order << QStringLiteral("done");
            EXPECT_EQ(processEnds, 0);
            QCoreApplication::exit();
        });
    };
    EXPECT_FALSE(accepts(QEvent::Quit));
    EXPECT_EQ(order, (QStringList{QStringLiteral("told"), QStringLiteral("done")}));
    EXPECT_EQ(processEnds, 1);
    EXPECT_EQ(m_quits, 0) << "nobody is asked";
}

} // namespace

} // namespace corvane

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
