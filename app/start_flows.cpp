#include "app/admin_password.h"
#include "app/app_model.h"
#include "app/busy_key.h"
#include "app/colima_start.h"
#include "app/container_steps.h"
#include "app/file_work.h"
#include "app/operation_title.h"
#include "app/password_work.h"
#include "checks/port_checker.h"
#include "runtime/colima_manager.h"
#include "runtime/docker_cli.h"
#include "runtime/pihole_controller.h"

#include <QPointer>
#include <QScopeGuard>

#include <algorithm>

namespace corvane {

namespace {

constexpr int kReturnRounds = 20;
constexpr std::chrono::seconds kReturnPause{3};

Alert autostartQuestion(bool on)
{
    Alert alert;
    alert.title = on ? QStringLiteral("Start Colima at login?") : QStringLiteral("Stop starting Colima at login?");
    alert.text =
        on ? QStringLiteral("Colima will be stopped once and then started by Homebrew's login service. Pi-hole is "
                            "unavailable for a short moment.")
           : QStringLiteral("Homebrew's login service for Colima will be stopped, and Colima will be started "
                            "again by hand (it will not start at login).");
    alert.accept = QStringLiteral("Continue");
    alert.reject = QStringLiteral("Cancel");
    return alert;
}

} // namespace

void AppModel::installColimaAndDocker()
{
    if (!hasBrew()) {
        m_workspace.open(QUrl(QStringLiteral("https://brew.sh")));
        return;
    }
    if (m_installOp.running()) return;
    const CommandSteps steps = ColimaManager::installSteps();
    if (steps.isEmpty()) {
        setNotice(QStringLiteral("Homebrew was not found."));
        return;
    }
    m_installOp.start(QStringLiteral("Installing Colima and Docker"), steps,
                      [this](bool succeeded) { launch(finishInstall(succeeded)); });
}

QCoro::Task<> AppModel::finishInstall(bool succeeded)
{
    const QPointer<AppModel> alive(this);
    co_await refreshTools();
    if (!alive || !succeeded) co_return;
    if (autostartColima() && dockerWorks()) applyAutostart(true);
    // What was missing when this Mac was checked is there now.
    if (!systemChecks().isEmpty()) co_await runSystemChecks();
}

void AppModel::applyAutostart(bool enable)
{
    if (m_installOp.running()) return;
    const CommandSteps steps = ColimaManager::autostartSteps(enable, dockerWorks());
    if (steps.isEmpty()) return;
    const QString title = enable ? OperationTitle::kTurningColimaOn : OperationTitle::kTurningColimaOff;
    m_installOp.start(title, steps, [this](bool) {
        if (m_installOp.failure().remedy == FailureReading::Remedy::StartColimaByHand) startColimaWithoutService();
        launch(waitForDocker());
    });
}

/// Docker must not stay down because macOS refused the login service.
void AppModel::startColimaWithoutService()
{
    setAutostartColima(false);
    setNotice(QStringLiteral("Colima does not start at login: macOS did not accept its login service. It is started "
                             "by hand now."));
    startColimaOnly();
}

QCoro::Task<> AppModel::waitForDocker()
{
    const QPointer<AppModel> alive(this);
    for (int round = 0; round < kReturnRounds; ++round) {
        co_await refreshTools();
        if (!alive || dockerWorks()) co_return;
        co_await m_clock.pause(kReturnPause);
        if (!alive) co_return;
    }
}

void AppModel::startColimaOnly()
{
    if (m_installOp.running()) return;
    const CommandSteps steps = colimaStartSteps(*this);
    if (steps.isEmpty()) {
        setNotice(QStringLiteral("Colima was not found."));
        return;
    }
    m_installOp.start(kStartingColima, steps, [this](bool) { launch(refreshTools()); });
}

QCoro::Task<> AppModel::testDocker()
{
    const QString key = QStringLiteral("docker");
    if (busy().contains(key)) co_return;
    const BusyKey mark(this, key);
    const QPointer<AppModel> alive(this);
    co_await refreshTools();
    if (!alive) co_return;
    recordOutcome(key, dockerWorks(),
                  dockerWorks() ? QStringLiteral("docker info works") : QStringLiteral("docker info failed"));
}

QCoro::Task<> AppModel::changeAutostart(bool on)
{
    const QPointer<AppModel> alive(this);
    setAutostartColima(on);
    if (!hasBrew() || !hasColima() || m_installOp.running()) co_return;
    if (dockerWorks()) {
        const Alert question = autostartQuestion(on);
        const bool accepted = co_await m_dialogs.confirm(question);
        if (!alive) co_return;
        if (!accepted) {
            setAutostartColima(!on);
            co_return;
        }
    }
    applyAutostart(on);
}

QString AppModel::generatePassword() { return AdminPassword::generate(); }

QCoro::Task<> AppModel::startPihole()
{
    if (m_preparingStart || maintains()) co_return;
    m_preparingStart = true;
    const QPointer<AppModel> alive(this);
    const auto done = qScopeGuard([alive] {
        if (alive) alive->m_preparingStart = false;
    });
    setStartPlace(Place::SetUp);
    setStartMessage({});
    const QString password = passwordInput();
    if (const auto problem = AdminPassword::problem(password)) {
        setStartMessage(*problem);
        co_return;
    }
    const bool ready = co_await piholeCanStart();
    if (!alive || !ready || maintains()) co_return;
    co_await startContainer(password);
}

/// Whether Docker works and no port is held by another program; says so when not.
QCoro::Task<bool> AppModel::piholeCanStart()
{
    const QPointer<AppModel> alive(this);
    co_await refreshTools();
    if (!alive) co_return false;
    if (!dockerWorks()) {
        setStartMessage(QStringLiteral("Docker is not running. Finish step 3 first."));
        co_return false;
    }
    const ContainerState container = co_await PiholeController::containerState();
    if (!alive) co_return false;
    if (container.isRunning()) co_return true;

    const QList<PortReport> reports = co_await PortChecker::checkAll(webPort());
    if (!alive) co_return false;
    setPortReports(reports);
    if (std::ranges::count(reports, PortProbe::InUse, &PortReport::probe) == 0) co_return true;
    setStartMessage(kPortTaken);
    co_return false;
}

QCoro::Task<> AppModel::startContainer(QString password)
{
    const QPointer<AppModel> alive(this);
    const WantedContainer wanted{pinnedTag(), webPort(), composeAvailable(), true};
    const auto steps = co_await containerSteps(wanted);
    if (!alive || maintains()) co_return;
    if (!steps) {
        setStartMessage(steps.error());
        co_return;
    }
    if (steps->isEmpty()) {
        setNotice(QStringLiteral("docker was not found."));
        co_return;
    }
    const bool saved = co_await savePassword(password);
    if (!alive) co_return;
    if (!saved) {
        setStartMessage(QStringLiteral("The password could not be saved in the Keychain."));
        co_return;
    }
    takePassword(*this, password);
    const auto written = co_await writePiholeFiles(pinnedTag(), webPort(), password);
    if (!alive) co_return;
    if (!written) {
        setStartMessage(QStringLiteral("Could not write the Pi-hole files: ") + written.error());
        co_return;
    }
    if (maintains()) co_return;
    configureAPI();
    m_startOp.start(QStringLiteral("Starting Pi-hole"), *steps, [this](bool succeeded) {
        if (succeeded) launch(runPiholeTests(true));
        // Who holds the port is read with the checks.
        if (m_startOp.failureSummary() == DockerCLI::kPortInUse) launch(runSystemChecks());
    });
}

} // namespace corvane
