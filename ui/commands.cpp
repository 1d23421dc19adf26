#include "ui/commands.h"

#include "runtime/docker_cli.h"
#include "ui/decisions/places.h"
#include "ui/decisions/ports.h"

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

void Commands::watchBlocked(bool on)
{
    if (on)
        launch(m_app.repair()->watch());
    else
        m_app.repair()->stopWatching();
}

void Commands::startPiholeNow(Place::Name from)
{
    if (from == Place::Banner) m_app.comeback()->setBannerHasStarted(true);
    launch(m_app.startPiholeNow(from));
}

void Commands::showRestoreScript() { m_workspace.open(QUrl::fromLocalFile(QFileInfo(m_app.restoreScript()).path())); }

void Commands::checksAppeared()
{
    if (m_app.systemChecks().isEmpty()) runSystemChecks();
}

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

void Commands::browsersAppeared()
{
    if (m_app.browserReadAllowed() && m_app.browsers().isEmpty()) scanBrowsers();
}

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

void Commands::select(const QString &service, bool on)
{
    QSet<QString> names = m_app.selectedServices();
    if (on)
        names.insert(service);
    else
        names.remove(service);
    m_app.setSelectedServices(names);
}

void Commands::loadServices()
{
    launch(m_app.loadServices());
    launch(m_app.refreshStatus(Stats::Leave)); // the servers in use
}

void Commands::allowBrowserRead()
{
    m_app.setBrowserReadAllowed(true);
    scanBrowsers();
}

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
