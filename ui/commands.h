#pragma once

#include "app/app_model.h"

#include <QObject>

namespace corvane {

/// The user's actions, one operation each, as the views call them.
class Commands : public QObject {
    Q_OBJECT

public:
    Commands(AppModel &app, Workspace &workspace);

    // Everyday actions.
    Q_INVOKABLE void openDashboard();
    Q_INVOKABLE void togglePause();
    Q_INVOKABLE void pauseFor(corvane::PauseLength::Name length);
    Q_INVOKABLE void loadBlockLists();
    Q_INVOKABLE void watchBlocked(bool on);
    Q_INVOKABLE void allow(const QString &name, bool forGood);
    Q_INVOKABLE void takeBack(const QString &name);
    Q_INVOKABLE void startPiholeNow(corvane::Place::Name from);
    Q_INVOKABLE void stopPihole();
    Q_INVOKABLE void restartPihole();
    Q_INVOKABLE void toggleStartStop();
    Q_INVOKABLE void runAllTests();
    Q_INVOKABLE void restoreOldSettings(corvane::Place::Name from);
    /// Shows the script that restores without Corvane in Finder.
    Q_INVOKABLE void showRestoreScript();
    Q_INVOKABLE void hideBanner();
    Q_INVOKABLE void dismissNotice();
    Q_INVOKABLE void toggleWizard();

    // The log.
    Q_INVOKABLE void loadLogs();
    Q_INVOKABLE void follow(bool on);
    Q_INVOKABLE void copyLog();
    Q_INVOKABLE void saveLogs();

    // The set-up.
    Q_INVOKABLE void go(int step);
    Q_INVOKABLE void checksAppeared();
    Q_INVOKABLE void installAppeared();
    Q_INVOKABLE void piholeAppeared();
    Q_INVOKABLE void dnsAppeared();
    Q_INVOKABLE void browsersAppeared();
    Q_INVOKABLE void runSystemChecks();
    Q_INVOKABLE void changeWebPort(int port);
    Q_INVOKABLE void openHomebrew();
    Q_INVOKABLE void installColimaAndDocker();
    Q_INVOKABLE void startColimaOnly();
    Q_INVOKABLE void changeAutostart(bool on);
    Q_INVOKABLE void testDocker();
    Q_INVOKABLE void generatePassword();
    Q_INVOKABLE void copyPasswordInput();
    Q_INVOKABLE void copyAdminPassword();
    Q_INVOKABLE void startPihole();
    Q_INVOKABLE void runPiholeTests();
    Q_INVOKABLE void fixUDPForwarding();
    Q_INVOKABLE void runBlockingTest();
    Q_INVOKABLE void select(const QString &service, bool on);
    Q_INVOKABLE void applyDNS();
    Q_INVOKABLE void loadServices();
    Q_INVOKABLE void runSystemTest();
    Q_INVOKABLE void allowBrowserRead();
    Q_INVOKABLE void scanBrowsers();
    Q_INVOKABLE void openBrowserSettings(const QString &id);
    Q_INVOKABLE void runBrowserTest();
    Q_INVOKABLE void proveBrowser(const QString &id);
    Q_INVOKABLE void leaveWizard();

    // Maintenance.
    Q_INVOKABLE void checkForUpdates();
    Q_INVOKABLE void performUpdate();
    Q_INVOKABLE void bringBack();
    Q_INVOKABLE void exportBackup();
    Q_INVOKABLE void importBackup();
    Q_INVOKABLE void setLaunchAtLogin(bool on);
    Q_INVOKABLE void setStartsAgain(bool on);
    Q_INVOKABLE void removePihole();
    Q_INVOKABLE void makeReport();
    Q_INVOKABLE void saveReport();
    Q_INVOKABLE void dropReport();

    /// Has a screen reader say where the keyboard has come to, instead of where it was before.
    Q_INVOKABLE void say(const QString &place) { Q_EMIT walked(place); }
    /// Copies plain text that a view shows.
    void copy(const QString &text);

Q_SIGNALS:
    void copied();
    void walked(const QString &place);

private:
    [[nodiscard]] Flow<> takeWebPort(int port);
    void forgetTakenPort();
    void checkPortsAgain();
    void copySecret(const QString &secret);

    AppModel &m_app;
    Workspace &m_workspace;
};

} // namespace corvane
