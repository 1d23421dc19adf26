#pragma once

#include "app/app_model.h"
#include "app/flow.h"

#include <QObject>

namespace corvane {

/// A flow of the model that a view begins; what it is and where it ends is said beside it in AppModel.
#define CORVANE_COMMAND(flow)                                                                                          \
    Q_INVOKABLE void flow() { launch(m_app.flow()); }

/// The user's actions, one operation each, as the views call them.
class Commands : public QObject {
    Q_OBJECT

public:
    Commands(AppModel &app, Workspace &workspace);

    // Everyday actions.
    Q_INVOKABLE void openDashboard() { m_app.openDashboard(); }
    CORVANE_COMMAND(togglePause)
    Q_INVOKABLE void pauseFor(corvane::PauseLength::Name length) { launch(m_app.pauseBlocking(length)); }
    CORVANE_COMMAND(loadBlockLists)
    /// Begins or ends the look at what Pi-hole blocks right now.
    Q_INVOKABLE void watchBlocked(bool on);
    Q_INVOKABLE void allow(const QString &name, bool forGood) { launch(m_app.repair()->allow(name, forGood)); }
    /// Has Pi-hole block the name again.
    Q_INVOKABLE void takeBack(const QString &name) { launch(m_app.repair()->takeBack(name)); }
    Q_INVOKABLE void startPiholeNow(corvane::Place::Name from);
    CORVANE_COMMAND(stopPihole)
    CORVANE_COMMAND(restartPihole)
    CORVANE_COMMAND(toggleStartStop)
    CORVANE_COMMAND(runAllTests)
    Q_INVOKABLE void restoreOldSettings(corvane::Place::Name from) { launch(m_app.restoreOldSettings(from)); }
    /// Shows the script that restores without Corvane in Finder.
    Q_INVOKABLE void showRestoreScript();
    Q_INVOKABLE void hideBanner() { m_app.setBannerDismissed(true); }
    Q_INVOKABLE void dismissNotice() { m_app.setNotice({}); }
    /// Goes from the dashboard to the set-up and back.
    Q_INVOKABLE void toggleWizard() { m_app.setShowWizard(!m_app.showWizard()); }

    // The log.
    CORVANE_COMMAND(loadLogs)
    Q_INVOKABLE void follow(bool on) { m_app.setFollowing(on); }
    Q_INVOKABLE void copyLog() { copy(m_app.logText()); }
    CORVANE_COMMAND(saveLogs)

    // The set-up. A step that appears finds out what it shows.
    Q_INVOKABLE void go(int step) { m_app.go(step); }
    Q_INVOKABLE void checksAppeared();
    Q_INVOKABLE void installAppeared() { launch(m_app.refreshTools()); }
    /// Fills in the saved password, or a new one once the keychain has said that it holds none.
    Q_INVOKABLE void piholeAppeared();
    Q_INVOKABLE void dnsAppeared() { loadServices(); }
    Q_INVOKABLE void browsersAppeared();
    CORVANE_COMMAND(runSystemChecks)
    /// Checks the ports again afterwards.
    Q_INVOKABLE void changeWebPort(int port) { launch(takeWebPort(port)); }
    Q_INVOKABLE void openHomebrew();
    Q_INVOKABLE void installColimaAndDocker() { m_app.installColimaAndDocker(); }
    Q_INVOKABLE void startColimaOnly() { m_app.startColimaOnly(); }
    Q_INVOKABLE void changeAutostart(bool on) { launch(m_app.changeAutostart(on)); }
    CORVANE_COMMAND(testDocker)
    Q_INVOKABLE void generatePassword() { m_app.setPasswordInput(AppModel::generatePassword()); }
    Q_INVOKABLE void copyPasswordInput() { copySecret(m_app.passwordInput()); }
    Q_INVOKABLE void copyAdminPassword() { copySecret(m_app.adminPassword()); }
    CORVANE_COMMAND(startPihole)
    /// Gives a container that is still starting no time.
    Q_INVOKABLE void runPiholeTests() { launch(m_app.runPiholeTests(Wait::No)); }
    CORVANE_COMMAND(fixUDPForwarding)
    CORVANE_COMMAND(runBlockingTest)
    /// Adds the network service to those whose servers will be changed, or takes it away.
    Q_INVOKABLE void select(const QString &service, bool on);
    CORVANE_COMMAND(applyDNS)
    /// Reads the services and the servers in use.
    Q_INVOKABLE void loadServices();
    CORVANE_COMMAND(runSystemTest)
    /// Remembers that the browsers' settings may be read, and reads them.
    Q_INVOKABLE void allowBrowserRead();
    CORVANE_COMMAND(scanBrowsers)
    Q_INVOKABLE void openBrowserSettings(const QString &id) { launch(m_app.openBrowserSettings(id)); }
    CORVANE_COMMAND(runBrowserTest)
    Q_INVOKABLE void proveBrowser(const QString &id) { launch(m_app.proveBrowser(id)); }
    Q_INVOKABLE void leaveWizard() { m_app.setShowWizard(false); }

    // Maintenance.
    CORVANE_COMMAND(checkForUpdates)
    CORVANE_COMMAND(performUpdate)
    CORVANE_COMMAND(bringBack)
    CORVANE_COMMAND(exportBackup)
    CORVANE_COMMAND(importBackup)
    Q_INVOKABLE void setLaunchAtLogin(bool on) { m_app.setLaunchAtLogin(on); }
    Q_INVOKABLE void setStartsAgain(bool on) { m_app.comeback()->setStartsAgain(on); }
    CORVANE_COMMAND(removePihole)
    CORVANE_COMMAND(makeReport)
    CORVANE_COMMAND(saveReport)
    /// Throws the report away that has been made.
    Q_INVOKABLE void dropReport() { m_app.setReport({}); }

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
