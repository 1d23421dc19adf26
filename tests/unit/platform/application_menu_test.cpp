#include "platform/application_menu.h"

#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QMenuBar>
#include <QTest>
#include <gtest/gtest.h>

namespace corvane {

namespace {

/// The Mac's menu bar; it needs nothing but Qt.
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

    int m_windows = 0;
    int m_settings = 0;
    int m_quits = 0;
    std::unique_ptr<QObject> m_menu =
        systemApplicationMenu({[this] { ++m_windows; }, [this] { ++m_settings; }, [this] { ++m_quits; }});
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

TEST_F(ApplicationMenu, The_system_can_only_ask_to_quit)
{
    QEvent asked(QEvent::Quit);
    QCoreApplication::sendEvent(qApp, &asked);
    EXPECT_EQ(m_quits, 1);
    EXPECT_FALSE(asked.isAccepted());
}

} // namespace

} // namespace corvane

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
