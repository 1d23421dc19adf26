#include "platform/application_menu.h"

#include <QEvent>
#include <QGuiApplication>
#include <QKeySequence>
#include <QMenu>
#include <QMenuBar>
#include <QWindow>

#include <algorithm>

namespace corvane {

namespace {

template <class Action>
void onFocusWindow(Action action)
{
    if (QWindow *window = QGuiApplication::focusWindow()) (window->*action)();
}

/// The standard menu bar. Qt moves actions with a role into the application menu and gives them the system's wording.
class MacApplicationMenu final : public QMenuBar {
public:
    explicit MacApplicationMenu(const ApplicationCommands &commands)
        : m_quit(commands.quit)
    {
        qGuiApp->installEventFilter(this);
        addApplicationMenu(commands);
        addWindowMenu(commands);
        connect(qGuiApp, &QGuiApplication::applicationStateChanged, this,
                [this, open = commands.openWindow](Qt::ApplicationState state) { onState(state, open); });
    }

    // The Dock's Quit, a script's and the end of the session come as this event. Unanswered, it would end Corvane
    // unasked.
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (watched != qGuiApp || event->type() != QEvent::Quit) return QMenuBar::eventFilter(watched, event);
        event->ignore();
        m_quit();
        return true;
    }

private:
    void addApplicationMenu(const ApplicationCommands &commands)
    {
        QMenu *menu = addMenu(QStringLiteral("Corvane"));
        QAction *settings = menu->addAction(QStringLiteral("Settings..."), this, commands.openSettings);
        settings->setMenuRole(QAction::PreferencesRole);
        settings->setShortcut(QKeySequence::Preferences);
        QAction *quit = menu->addAction(QStringLiteral("Quit Corvane"), this, commands.quit);
        quit->setMenuRole(QAction::QuitRole);
        quit->setShortcut(QKeySequence::Quit);
    }

    void addWindowMenu(const ApplicationCommands &commands)
    {
        QMenu *menu = addMenu(QStringLiteral("Window"));
        menu->addAction(QStringLiteral("Minimize"), this, [] { onFocusWindow(&QWindow::showMinimized); })
            ->setShortcut(QKeySequence(QStringLiteral("Ctrl+M")));
        menu->addAction(QStringLiteral("Close"), this, [] { onFocusWindow(&QWindow::close); })
            ->setShortcut(QKeySequence::Close);
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
    bool m_active = false;
};

} // namespace

std::unique_ptr<QObject> systemApplicationMenu(const ApplicationCommands &commands)
{
    return std::make_unique<MacApplicationMenu>(commands);
}

} // namespace corvane
