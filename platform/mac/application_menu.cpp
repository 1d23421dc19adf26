#include "platform/application_menu.h"

#include "platform/mac/about_panel.h"
#include "platform/session.h"

#include <QEvent>
#include <QEventLoop>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QKeySequence>
#include <QMenu>
#include <QMenuBar>
#include <QWindow>

#include <algorithm>
#include <functional>

namespace corvane {

namespace {

template <class Action>
void onFocusWindow(Action action)
{
    if (QWindow *window = QGuiApplication::focusWindow()) std::invoke(action, window);
}

void zoom(QWindow *window) { window->setWindowStates(window->windowStates() ^ Qt::WindowMaximized); }

void bringAllToFront()
{
    for (QWindow *window : QGuiApplication::topLevelWindows()) {
        if (window->isVisible()) window->raise();
    }
}

/// Gives the keys of a command to whatever has the focus, as if they had been typed.
void type(QKeySequence::StandardKey command)
{
    QObject *focus = QGuiApplication::focusObject();
    const QKeySequence keys(command);
    if (!focus || keys.isEmpty()) return;
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event(type, keys[0].key(), keys[0].keyboardModifiers());
        QCoreApplication::sendEvent(focus, &event);
    }
}

/// The standard menu bar. Qt moves actions with a role into the application menu and gives them the system's wording.
class MacApplicationMenu final : public QMenuBar {
public:
    explicit MacApplicationMenu(const ApplicationCommands &commands)
        : m_quit(commands.quit)
        , m_endWithSession(commands.endWithSession)
    {
        qGuiApp->installEventFilter(this);
        addApplicationMenu(commands);
        addFileMenu();
        addEditMenu();
        addWindowMenu(commands);
        addMenu(QStringLiteral("Help"))->addAction(QStringLiteral("Corvane Help"), this, commands.openHelp);
        connect(qGuiApp, &QGuiApplication::applicationStateChanged, this,
                [this, open = commands.openWindow](Qt::ApplicationState state) { onState(state, open); });
    }

    // The Dock's Quit, a script's and the end of the session come as this event. Unanswered, it would end Corvane
    // unasked.
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (watched != qGuiApp || event->type() != QEvent::Quit) return QMenuBar::eventFilter(watched, event);
        event->ignore();
        if (platform::sessionIsEnding())
            endWithSession();
        else
            m_quit();
        return true;
    }

private:
    // Any answer that Qt could give here means "not now", which calls the whole log-out off. So none is given: the
    // question stays open until Corvane is done, and the process ends with it.
    void endWithSession()
    {
        m_endWithSession();
        QEventLoop().exec();
        platform::leaveAtOnce();
    }

    void addApplicationMenu(const ApplicationCommands &commands)
    {
        QMenu *menu = addMenu(QStringLiteral("Corvane"));
        menu->addAction(QStringLiteral("About Corvane"), this, platform::showAboutPanel)
            ->setMenuRole(QAction::AboutRole);
        QAction *settings = menu->addAction(QStringLiteral("Settings..."), this, commands.openSettings);
        settings->setMenuRole(QAction::PreferencesRole);
        settings->setShortcut(QKeySequence::Preferences);
        QAction *quit = menu->addAction(QStringLiteral("Quit Corvane"), this, commands.quit);
        quit->setMenuRole(QAction::QuitRole);
        quit->setShortcut(QKeySequence::Quit);
    }

    void addFileMenu()
    {
        addMenu(QStringLiteral("File"))
            ->addAction(QStringLiteral("Close"), this, [] { onFocusWindow(&QWindow::close); })
            ->setShortcut(QKeySequence::Close);
    }

    void addEditMenu()
    {
        QMenu *menu = addMenu(QStringLiteral("Edit"));
        const auto add = [&](const QString &name, QKeySequence::StandardKey command) {
            menu->addAction(name, this, [command] { type(command); })->setShortcut(command);
        };
        add(QStringLiteral("Undo"), QKeySequence::Undo);
        add(QStringLiteral("Redo"), QKeySequence::Redo);
        menu->addSeparator();
        add(QStringLiteral("Cut"), QKeySequence::Cut);
        add(QStringLiteral("Copy"), QKeySequence::Copy);
        add(QStringLiteral("Paste"), QKeySequence::Paste);
        add(QStringLiteral("Select All"), QKeySequence::SelectAll);
    }

    void addWindowMenu(const ApplicationCommands &commands)
    {
        QMenu *menu = addMenu(QStringLiteral("Window"));
        menu->addAction(QStringLiteral("Minimize"), this, [] { onFocusWindow(&QWindow::showMinimized); })
            ->setShortcut(QKeySequence(QStringLiteral("Ctrl+M")));
        menu->addAction(QStringLiteral("Zoom"), this, [] { onFocusWindow(zoom); });
        menu->addSeparator();
        menu->addAction(QStringLiteral("Bring All to Front"), this, bringAllToFront);
        menu->addSeparator();
        menu->addAction(QStringLiteral("Corvane"), this, commands.openWindow);
    }

    // A click on the Dock icon reports "active" once more to an application that already is.
    void onState(Qt::ApplicationState state, const std::function<void()> &openWindow)
    {
        const bool clickedInDock = m_active && state == Qt::ApplicationActive;
        m_active = state == Qt::ApplicationActive;
        if (clickedInDock && !hasVisibleWindow()) openWindow();
    }

    static bool hasVisibleWindow()
    {
        const QWindowList windows = QGuiApplication::topLevelWindows();
        return std::any_of(windows.begin(), windows.end(), [](const QWindow *window) { return window->isVisible(); });
    }

    std::function<void()> m_quit;
    std::function<void()> m_endWithSession;
    bool m_active = false;
};

} // namespace

std::unique_ptr<QObject> systemApplicationMenu(const ApplicationCommands &commands)
{
    return std::make_unique<MacApplicationMenu>(commands);
}

} // namespace corvane
