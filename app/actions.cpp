#include "app/app_model.h"
#include "app/colima_start.h"
#include "app/docker_words.h"
#include "app/operation.h"
#include "app/wizard_steps.h"
#include "facts/container_name.h"
#include "runtime/docker_cli.h"
#include "runtime/machine_port.h"
#include "runtime/pihole_controller.h"

namespace corvane {

namespace {

constexpr std::chrono::seconds kStartTimeout{30};
constexpr std::chrono::seconds kStopTimeout{60};

} // namespace

void AppModel::openDashboard() { m_workspace.open(dashboardURL()); }

Flow<> AppModel::startPiholeNow(Place::Name from)
{
    if (!mayBegin(Activity::StartContainer, &AppModel::setStartMessage)) co_return;
    std::optional<ActivityMark> mark(std::in_place, m_activities, Activity::StartContainer);
    co_await boundTo(*mark);
    m_comeback.setStoppedByUser(false);
    setStartPlace(from);
    tellStart({}, {});
    const bool up = co_await bringDockerUp();
    if (up) co_await finishStart();
    mark.reset(); // comparing is in the way of nothing
    co_await putRight();
}

/// Starts Colima where Docker does not answer. False when it could not, which it has said then.
Flow<bool> AppModel::bringDockerUp()
{
    co_await refreshTools();
    if (dockerWorks()) co_return true;
    if (!hasColima()) {
        setNotice(
            QStringLiteral("Colima is not installed. Use step %1 of the wizard.").arg(stepNumber(WizardStep::Install)));
        co_return false;
    }
    const CommandSteps steps = colimaStartSteps(*this);
    if (steps.isEmpty()) {
        setNotice(kNoColima);
        co_return false;
    }
    const bool started = co_await perform(&m_maintOp, kStartingColima, steps);
    if (!started) {
        if (m_maintOp.cancelled()) m_comeback.giveUp();
        setNotice(kColimaDidNotStart);
        co_return false;
    }
    // Where Colima is booting already, as after a login, its start ends at once.
    setStartMessage(QStringLiteral("Waiting for Docker..."));
    co_await waitForDocker();
    setStartMessage({});
    if (mayDockerCome(*this)) setNotice(kDockerIsLate);
    co_return true;
}

Flow<> AppModel::finishStart()
{
    co_await refreshTools();
    const ContainerState container = co_await PiholeController::containerState();
    setContainerState(container);
    if (container.isMissing()) findWayBack();
    if (container.isMissing() && !wayBack().isEmpty()) {
        co_await startAnew();
        co_return;
    }
    if (container.isMissing()) {
        setStartMessage(QStringLiteral("Pi-hole is not installed yet. Run step %1 of the wizard.")
                            .arg(stepNumber(WizardStep::Pihole)));
        co_return;
    }
    const QString problem = co_await makeRoom();
    tellStart(problem, {});
    if (!problem.isEmpty()) {
        co_await refreshStatus(Stats::Include);
        co_return;
    }
    const QStringList start{QStringLiteral("start"), kContainerName};
    const CommandResult result = co_await DockerCLI::run(start, kStartTimeout);
    co_await afterControl(result, Activity::StartContainer);
}

/// Lets Colima's own name service give way to the container; who else is in its way, as a sentence.
Flow<QString> AppModel::makeRoom()
{
    const MachinePort port = co_await MachinePort::ask();
    if (port.holder() != MachinePort::Holder::NameService) co_return port.problem();
    setStartMessage(MachinePort::kMakingRoom + QStringLiteral("..."));
    co_await MachinePort::makeRoom();
    co_return {};
}

Flow<> AppModel::stopPihole(Place::Name from) { return control(Activity::StopContainer, QStringLiteral("stop"), from); }

Flow<> AppModel::restartPihole()
{
    return control(Activity::RestartContainer, QStringLiteral("restart"), Place::Dashboard);
}

Flow<> AppModel::control(Activity activity, QString verb, Place::Name from)
{
    if (!mayBegin(activity, &AppModel::setStartMessage)) co_return;
    const ActivityMark mark(m_activities, activity);
    co_await boundTo(mark);
    m_comeback.setStoppedByUser(activity == Activity::StopContainer);
    setStartPlace(from);
    tellStart({}, {});
    const QStringList command{verb, kContainerName};
    const CommandResult result = co_await DockerCLI::run(command, kStopTimeout);
    co_await afterControl(result, activity);
}

/// Why the container was not started or stopped, and beside it what docker itself said.
void AppModel::tellStart(const QString &message, const QString &note)
{
    setStartMessage(message);
    setNote(QStringLiteral("start"), note);
}

/// Says how docker's command ended, and looks what came of it.
Flow<> AppModel::afterControl(CommandResult result, Activity done)
{
    if (!result.succeeded()) tellStart(whyDockerFailed(result), dockerSays(result));
    if (done == Activity::StopContainer && result.succeeded()) endWatch();
    if (done != Activity::StopContainer && result.succeeded())
        co_await refreshAfterStart();
    else
        co_await refreshStatus(Stats::Include);
}

Flow<> AppModel::toggleStartStop()
{
    if (containerState().isRunning())
        co_await stopPihole(Place::Menu);
    else
        co_await startPiholeNow(Place::Menu);
}

} // namespace corvane
