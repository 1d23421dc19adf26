#include "app/admin_password.h"
#include "app/app_model.h"
#include "app/colima_start.h"
#include "app/container_steps.h"
#include "app/file_work.h"
#include "app/operation.h"
#include "app/operation_title.h"
#include "app/password_work.h"
#include "app/wizard_steps.h"
#include "checks/port_checker.h"
#include "runtime/colima_manager.h"
#include "runtime/docker_cli.h"
#include "runtime/pihole_controller.h"

#include <algorithm>

namespace corvane {

namespace {

constexpr int kReturnRounds = 20;
constexpr std::chrono::seconds kReturnPause{3};
const QString kNoHomebrew = QStringLiteral("Homebrew was not found.");

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

/// Homebrew leaves a login service alone that it has started once: nobody starts Colima again then.
bool serviceWasThere(const QStringList &log)
{
    return std::ranges::any_of(log, [](const QString &line) {
        return line.startsWith(QLatin1StringView("Service `colima` already started"));
    });
}

} // namespace

void AppModel::installColimaAndDocker() { launch(install()); }

Flow<> AppModel::install()
{
    if (!hasBrew()) {
        m_workspace.open(QUrl(QStringLiteral("https://brew.sh")));
        co_return;
    }
    if (!mayBegin(Activity::Install, &AppModel::setNotice)) co_return;
    const ActivityMark mark(m_activities, Activity::Install);
    co_await boundTo(mark);
    const CommandSteps steps = ColimaManager::installSteps();
    if (steps.isEmpty()) {
        setNotice(kNoHomebrew);
        co_return;
    }
    const bool installed = co_await perform(&m_installOp, QStringLiteral("Installing Colima and Docker"), steps);
    co_await refreshTools();
    if (!installed) co_return;
    if (autostartColima() && dockerWorks()) co_await switchAutostart(true);
    // What was missing when this Mac was checked is there now.
    if (!systemChecks().isEmpty()) co_await runSystemChecks();
}

void AppModel::applyAutostart(bool enable) { launch(changeLoginService(enable)); }

Flow<> AppModel::changeLoginService(bool enable)
{
    if (!mayBegin(Activity::Autostart, &AppModel::setNotice)) co_return;
    const ActivityMark mark(m_activities, Activity::Autostart);
    co_await switchAutostart(enable);
}

/// Runs the steps and waits until Docker is back.
Flow<> AppModel::switchAutostart(bool enable)
{
    const CommandSteps steps = ColimaManager::autostartSteps(enable, dockerWorks());
    if (steps.isEmpty()) {
        setNotice(ColimaManager::find() ? kNoHomebrew : kNoColima);
        co_return;
    }
    const bool stopsColima = enable && dockerWorks();
    const QString title = enable ? OperationTitle::kTurningColimaOn : OperationTitle::kTurningColimaOff;
    co_await perform(&m_installOp, title, steps);
    if (stopsColima && m_installOp.succeeded() && serviceWasThere(m_installOp.lines()))
        co_await perform(&m_installOp, kStartingColima, colimaStartSteps(*this));
    if (m_installOp.failure().remedy == FailureReading::Remedy::StartColimaByHand) co_await startColimaWithoutService();
    co_await waitForDocker();
    if (m_installOp.succeeded() && mayDockerCome(*this)) setNotice(kDockerIsLate);
}

/// Docker must not stay down because macOS refused the login service.
Flow<> AppModel::startColimaWithoutService()
{
    setAutostartColima(false);
    setNotice(QStringLiteral("Colima does not start at login: macOS did not accept its login service. It is started "
                             "by hand now."));
    co_await perform(&m_installOp, kStartingColima, colimaStartSteps(*this));
}

/// Gives up after a minute.
Flow<> AppModel::waitForDocker()
{
    for (int round = 0; round < kReturnRounds; ++round) {
        co_await refreshTools();
        if (!mayDockerCome(*this)) co_return;
        co_await m_clock.pause(kReturnPause);
    }
}

void AppModel::startColimaOnly() { launch(startColima()); }

Flow<> AppModel::startColima()
{
    if (!mayBegin(Activity::StartColima, &AppModel::setNotice)) co_return;
    const ActivityMark mark(m_activities, Activity::StartColima);
    co_await boundTo(mark);
    const CommandSteps steps = colimaStartSteps(*this);
    if (steps.isEmpty()) {
        setNotice(kNoColima);
        co_return;
    }
    const bool started = co_await perform(&m_installOp, kStartingColima, steps);
    if (!started) {
        co_await refreshTools();
        co_return;
    }
    co_await waitForDocker();
    if (mayDockerCome(*this)) setNotice(kDockerIsLate);
}

Flow<> AppModel::testDocker()
{
    if (!m_activities.mayBegin(Activity::DockerTest)) co_return;
    const ActivityMark mark(m_activities, Activity::DockerTest);
    co_await boundTo(mark);
    co_await refreshTools();
    recordOutcome(QStringLiteral("docker"), dockerWorks(),
                  dockerWorks() ? QStringLiteral("docker info works") : QStringLiteral("docker info failed"));
}

Flow<> AppModel::changeAutostart(bool on)
{
    setAutostartColima(on);
    if (!hasBrew() || !hasColima() || m_installOp.running()) co_return;
    if (!mayBegin(Activity::Autostart, &AppModel::setNotice)) {
        setAutostartColima(!on);
        co_return;
    }
    ActivityMark mark(m_activities, Activity::Autostart, ActivityMark::Begin::WhenAgreed);
    co_await boundTo(mark);
    if (dockerWorks()) {
        const Alert question = autostartQuestion(on);
        const bool accepted = co_await m_dialogs.confirm(question);
        if (!accepted) {
            setAutostartColima(!on);
            co_return;
        }
    }
    mark.agreed();
    co_await switchAutostart(on);
}

QString AppModel::generatePassword() { return AdminPassword::generate(); }

Flow<> AppModel::startPihole()
{
    if (!mayBegin(Activity::StartPihole, &AppModel::setStartMessage)) co_return;
    std::optional<ActivityMark> mark(std::in_place, m_activities, Activity::StartPihole);
    co_await boundTo(*mark);
    setStartPlace(Place::SetUp);
    tellStart({}, {});
    const QString password = passwordInput();
    if (const auto problem = AdminPassword::problem(password)) {
        setStartMessage(*problem);
        co_return;
    }
    const bool ready = co_await piholeCanStart();
    if (!ready) co_return;
    const bool started = co_await startContainer(password);
    mark.reset(); // nothing that follows is in the way of anything
    if (started) co_await runPiholeTests(Wait::ForStart);
}

/// Whether Docker works and no port is held by another program; says so when not.
Flow<bool> AppModel::piholeCanStart()
{
    co_await refreshTools();
    if (!dockerWorks()) {
        setStartMessage(
            QStringLiteral("Docker is not running. Finish step %1 first.").arg(stepNumber(WizardStep::Install)));
        co_return false;
    }
    const ContainerState container = co_await PiholeController::containerState();
    if (container.isRunning()) co_return true;

    const QList<PortReport> reports = co_await PortChecker::checkAll(webPort());
    setPortReports(reports);
    if (std::ranges::count(reports, PortProbe::InUse, &PortReport::probe) == 0) co_return true;
    setStartMessage(kPortTaken);
    co_return false;
}

/// Makes a new container with this password; whether it did.
Flow<bool> AppModel::startContainer(QString password)
{
    const WantedContainer wanted{.tag = pinnedTag(), .webPort = webPort(), .compose = composeAvailable(), .pull = true};
    const auto steps = co_await containerSteps(wanted);
    if (!steps) {
        setStartMessage(steps.error());
        co_return false;
    }
    const bool kept = co_await keepPassword(password);
    if (!kept) co_return false;
    const auto written = co_await writeFiles();
    if (!written) {
        setStartMessage(kFilesNotWritten + written.error());
        co_return false;
    }
    configureAPI();
    const bool started = co_await perform(&m_startOp, QStringLiteral("Starting Pi-hole"), *steps);
    // Who holds the port is read with the checks.
    if (m_startOp.failureSummary() == DockerCLI::kPortInUse) launch(runSystemChecks());
    co_return started;
}

/// From now on this is the password; whether the keychain took it.
Flow<bool> AppModel::keepPassword(QString password)
{
    const bool wasOnItsWay = m_newPassword.isOnItsWay();
    m_newPassword.begin(); // first: a user who is cut off from here on learns of it
    const bool saved = co_await savePassword(password);
    if (saved) {
        takePassword(*this, password);
        co_return true;
    }
    if (!wasOnItsWay) m_newPassword.end();
    setStartMessage(QStringLiteral("The password could not be saved in the Keychain."));
    co_return false;
}

} // namespace corvane
