#include "ui/commands.h"

#include "app/flow.h"
#include "runtime/docker_cli.h"
#include "ui/decisions/places.h"
#include "ui/decisions/rows.h"

#include <QFileInfo>

namespace corvane {

namespace {

constexpr auto kOnce =
    static_cast<Qt::ConnectionType>(Qt::AutoConnection | Qt::UniqueConnection | Qt::SingleShotConnection);

} // namespace

Commands::Commands(AppModel &app, Workspace &workspace)
    : m_app(app)
    , m_workspace(workspace)
{
    connect(app.maintOp(), &OperationRunner::endedChanged, this, [this] {
        if (m_app.maintOp()->ended() && movesPort(m_app.maintOp()->title())) checkPortsAgain();
    });
    // What a start said of the old port holds no more, unless it met another one too.
    connect(&app, &AppModel::webPortChanged, this, [this] {
        if (!dnsPortTaken(m_app.portReports())) forgetTakenPort();
    });
}

void Commands::openDashboard() { m_app.openDashboard(); }
void Commands::togglePause() { launch(m_app.togglePause()); }
void Commands::pauseFor(PauseLength::Name length) { launch(m_app.pauseBlocking(length)); }
void Commands::loadBlockLists() { launch(m_app.loadBlockLists()); }

void Commands::watchBlocked(bool on)
{
    if (on)
        launch(m_app.repair()->watch());
    else
        m_app.repair()->stopWatching();
}

void Commands::allow(const QString &name, bool forGood) { launch(m_app.repair()->allow(name, forGood)); }
void Commands::takeBack(const QString &name) { launch(m_app.repair()->takeBack(name)); }

void Commands::startPiholeNow(Place::Name from)
{
    if (from == Place::Banner) m_app.comeback()->setBannerHasStarted(true);
    launch(m_app.startPiholeNow(from));
}

void Commands::stopPihole() { launch(m_app.stopPihole()); }
void Commands::restartPihole() { launch(m_app.restartPihole()); }
void Commands::toggleStartStop() { launch(m_app.toggleStartStop()); }
void Commands::runAllTests() { launch(m_app.runAllTests()); }
void Commands::restoreOldSettings(Place::Name from) { launch(m_app.restoreOldSettings(from)); }
void Commands::showRestoreScript() { m_workspace.open(QUrl::fromLocalFile(QFileInfo(m_app.restoreScript()).path())); }

void Commands::makeReport() { launch(m_app.makeReport()); }
void Commands::saveReport() { launch(m_app.saveReport()); }
void Commands::dropReport() { m_app.setReport({}); }

void Commands::hideBanner() { m_app.setBannerDismissed(true); }
void Commands::dismissNotice() { m_app.setNotice({}); }
void Commands::toggleWizard() { m_app.setShowWizard(!m_app.showWizard()); }

void Commands::loadLogs() { launch(m_app.loadLogs()); }
void Commands::follow(bool on) { m_app.setFollowing(on); }
void Commands::copyLog() { copy(m_app.logText()); }
void Commands::saveLogs() { launch(m_app.saveLogs()); }

void Commands::go(int step) { m_app.go(step); }

void Commands::checksAppeared()
{
    if (m_app.systemChecks().isEmpty()) runSystemChecks();
}

void Commands::installAppeared() { launch(m_app.refreshTools()); }

void Commands::piholeAppeared()
{
    if (!m_app.passwordInput().isEmpty()) return;
    if (!m_app.passwordKnown()) { // A new password must not take the place of one that the keychain still holds.
        connect(&m_app, &AppModel::passwordKnownChanged, this, &Commands::piholeAppeared, kOnce);
        return;
    }
    const QString saved = m_app.adminPassword();
    m_app.setPasswordInput(saved.isEmpty() ? AppModel::generatePassword() : saved);
}

void Commands::dnsAppeared() { loadServices(); }

void Commands::browsersAppeared()
{
    if (m_app.browserReadAllowed() && m_app.browsers().isEmpty()) scanBrowsers();
}

void Commands::runSystemChecks() { launch(m_app.runSystemChecks()); }
void Commands::changeWebPort(int port) { launch(takeWebPort(port)); }

Flow<> Commands::takeWebPort(int port)
{
    co_await m_app.changeWebPort(port);
    checkPortsAgain();
}

void Commands::forgetTakenPort()
{
    if (m_app.startMessage() == AppModel::kPortTaken) m_app.setStartMessage({});
    if (m_app.startOp()->failureSummary() == DockerCLI::kPortInUse) m_app.startOp()->reset();
}

/// What was found when this Mac was checked speaks of the port that was in force then.
void Commands::checkPortsAgain()
{
    if (!m_app.systemChecks().isEmpty() || !m_app.portReports().isEmpty()) runSystemChecks();
}

void Commands::openHomebrew() { m_workspace.open(QUrl(QStringLiteral("https://brew.sh"))); }
void Commands::installColimaAndDocker() { m_app.installColimaAndDocker(); }
void Commands::startColimaOnly() { m_app.startColimaOnly(); }
void Commands::changeAutostart(bool on) { launch(m_app.changeAutostart(on)); }
void Commands::testDocker() { launch(m_app.testDocker()); }
void Commands::generatePassword() { m_app.setPasswordInput(AppModel::generatePassword()); }
void Commands::copyPasswordInput() { copySecret(m_app.passwordInput()); }
void Commands::copyAdminPassword() { copySecret(m_app.adminPassword()); }
void Commands::startPihole() { launch(m_app.startPihole()); }
void Commands::runPiholeTests() { launch(m_app.runPiholeTests(Wait::No)); }
void Commands::fixUDPForwarding() { launch(m_app.fixUDPForwarding()); }
void Commands::runBlockingTest() { launch(m_app.runBlockingTest()); }

void Commands::select(const QString &service, bool on)
{
    QSet<QString> names = m_app.selectedServices();
    if (on)
        names.insert(service);
    else
        names.remove(service);
    m_app.setSelectedServices(names);
}

void Commands::applyDNS() { launch(m_app.applyDNS()); }

void Commands::loadServices()
{
    launch(m_app.loadServices());
    launch(m_app.refreshStatus(Stats::Leave)); // the servers in use
}

void Commands::runSystemTest() { launch(m_app.runSystemTest()); }

void Commands::allowBrowserRead()
{
    m_app.setBrowserReadAllowed(true);
    scanBrowsers();
}

void Commands::scanBrowsers() { launch(m_app.scanBrowsers()); }
void Commands::openBrowserSettings(const QString &id) { launch(m_app.openBrowserSettings(id)); }
void Commands::runBrowserTest() { launch(m_app.runBrowserTest()); }
void Commands::proveBrowser(const QString &id) { launch(m_app.proveBrowser(id)); }
void Commands::leaveWizard() { m_app.setShowWizard(false); }

void Commands::checkForUpdates() { launch(m_app.checkForUpdates()); }
void Commands::performUpdate() { launch(m_app.performUpdate()); }
void Commands::bringBack() { launch(m_app.bringBack()); }
void Commands::exportBackup() { launch(m_app.exportBackup()); }
void Commands::importBackup() { launch(m_app.importBackup()); }
void Commands::setLaunchAtLogin(bool on) { m_app.setLaunchAtLogin(on); }
void Commands::setStartsAgain(bool on) { m_app.comeback()->setStartsAgain(on); }
void Commands::removePihole() { launch(m_app.removePihole()); }

void Commands::copy(const QString &text)
{
    m_workspace.copyToClipboard(text);
    Q_EMIT copied();
}

void Commands::copySecret(const QString &secret)
{
    m_workspace.copySecretToClipboard(secret);
    Q_EMIT copied();
}

} // namespace corvane
