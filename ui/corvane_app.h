#pragma once

#include "platform/announcer.h"
#include "platform/appearance.h"
#include "platform/application_menu.h"
#include "platform/status_item.h"
#include "platform/wake_signals.h"
#include "remote/receiver.h"
#include "ui/announcements.h"
#include "ui/commands.h"
#include "ui/file_panels.h"
#include "ui/looks.h"
#include "ui/menu_content.h"
#include "ui/windows.h"

#include <QImage>

#include <memory>

namespace corvane {

/// The application: owns the one model for the whole run and the places where the user meets it.
class CorvaneApp : public QObject {
    Q_OBJECT

public:
    CorvaneApp();
    ~CorvaneApp() override;

    /// Shows the menu-bar item and the main window and begins to watch Pi-hole.
    void start();
    /// Ends the program; asks first while something is under way that would be cut off, and puts back what was begun.
    void quit();
    /// Ends the program without a question and at once: the user's session ends.
    void endWithSession();

    /// The picture of the menu-bar item.
    [[nodiscard]] static QImage dot(MenuIcon icon, double scale);

private:
    [[nodiscard]] Surroundings surroundings();
    void openSettings();
    void showIcon();
    [[nodiscard]] Flow<> askAndQuit();
    static void leave();

    std::unique_ptr<SettingsStore> m_settings;
    std::unique_ptr<Workspace> m_workspace;
    std::unique_ptr<LoginItem> m_loginItem;
    std::unique_ptr<Appearance> m_appearance;
    std::unique_ptr<Announcer> m_announcer;
    Dialogs m_dialogs;
    bool m_asksToQuit = false;
    SystemClock m_clock;
    AppModel m_model;
    Looks m_looks;
    Commands m_commands;
    Announcements m_announcements;
    Windows m_windows;
    FilePanels m_filePanels;
    MenuContent m_menu;
    remote::Receiver m_receiver;
    std::unique_ptr<StatusItem> m_statusItem;
    std::unique_ptr<QObject> m_applicationMenu;
    std::unique_ptr<WakeSignals> m_wakeSignals;
    std::shared_ptr<void> m_watching;
};

} // namespace corvane
