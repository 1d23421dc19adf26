#include "app/app_model.h"
#include "app/busy_key.h"
#include "app/colima_start.h"
#include "runtime/docker_cli.h"
#include "runtime/machine_port.h"
#include "runtime/pihole_controller.h"

#include <QPointer>

namespace corvane {

namespace {

const QString kContainerKey = QStringLiteral("container");
constexpr int kPauseSeconds = 300;
constexpr double kStartTimeout = 30; // seconds
constexpr double kStopTimeout = 60;  // seconds

} // namespace

void AppModel::openDashboard() { m_workspace.open(dashboardURL()); }

QCoro::Task<> AppModel::pauseBlocking()
{
    const QPointer<AppModel> alive(this);
    configureAPI();
    const auto changed = co_await m_api.setBlocking(false, kPauseSeconds);
    if (!alive) co_return;
    const auto state = changed ? co_await m_api.blocking() : changed;
    if (!alive) co_return;
    if (!state) {
        setApiMessage(QStringLiteral("Could not pause blocking: ") + state.error().description());
        co_return;
    }
    setBlocking(*state);
    setApiMessage(QStringLiteral("Blocking is paused for 5 minutes."));
}

QCoro::Task<> AppModel::resumeBlocking()
{
    const QPointer<AppModel> alive(this);
    configureAPI();
    const auto changed = co_await m_api.setBlocking(true, std::nullopt);
    if (!alive) co_return;
    const auto state = changed ? co_await m_api.blocking() : changed;
    if (!alive) co_return;
    if (!state) {
        setApiMessage(QStringLiteral("Could not resume blocking: ") + state.error().description());
        co_return;
    }
    setBlocking(*state);
    setApiMessage(QStringLiteral("Blocking is back on."));
}

QCoro::Task<> AppModel::togglePause()
{
    const QPointer<AppModel> alive(this);
    // The button's label takes blocking for on while it is not known; what it does must follow what is so.
    if (!blocking()) {
        co_await refreshStats();
        if (!alive || !blocking()) co_return;
    }
    const bool blocks = blocking() && blocking()->enabled;
    if (blocks)
        co_await pauseBlocking();
    else
        co_await resumeBlocking();
}

QCoro::Task<> AppModel::startPiholeNow(Place::Name from)
{
    if (maintains() || busy().contains(kContainerKey)) co_return;
    setStartPlace(from);
    const BusyKey mark(this, kContainerKey);
    const QPointer<AppModel> alive(this);
    setStartMessage({});
    co_await refreshTools();
    if (!alive) co_return;
    if (dockerWorks()) {
        co_await finishStart();
        co_return;
    }
    if (!hasColima()) {
        setNotice(QStringLiteral("Colima is not installed. Use step 3 of the wizard."));
        co_return;
    }
    const CommandSteps steps = colimaStartSteps(*this);
    if (steps.isEmpty()) {
        setNotice(QStringLiteral("Colima was not found."));
        co_return;
    }
    if (maintains()) co_return;
    m_maintOp.start(kStartingColima, steps, [this](bool succeeded) {
        if (succeeded)
            launch(finishStart());
        else
            setNotice(QStringLiteral("Colima did not start. See the log."));
    });
}

QCoro::Task<> AppModel::finishStart()
{
    const BusyKey mark(this, kContainerKey);
    const QPointer<AppModel> alive(this);
    co_await refreshTools();
    if (!alive) co_return;
    const ContainerState container = co_await PiholeController::containerState();
    if (!alive) co_return;
    setContainerState(container);
    if (container.isMissing()) {
        setStartMessage(QStringLiteral("Pi-hole is not installed yet. Run step 4 of the wizard."));
        co_return;
    }
    const QString problem = co_await makeRoom();
    if (!alive) co_return;
    setStartMessage(problem);
    if (problem.isEmpty()) {
        const QStringList start{QStringLiteral("start"), QStringLiteral("pihole")};
        const CommandResult result = co_await DockerCLI::run(start, kStartTimeout);
        if (!alive) co_return;
        if (!result.succeeded()) setStartMessage(DockerCLI::friendlyError(result.combined()));
    }
    co_await refreshStatus(true);
}

/// Lets Colima's own name service give way to the container; who else is in its way, as a sentence.
QCoro::Task<QString> AppModel::makeRoom()
{
    const QPointer<AppModel> alive(this);
    const MachinePort port = co_await MachinePort::ask();
    if (!alive || port.holder() != MachinePort::Holder::NameService) co_return port.problem();
    setStartMessage(MachinePort::kMakingRoom + QStringLiteral("..."));
    co_await MachinePort::makeRoom();
    co_return {};
}

QCoro::Task<> AppModel::stopPihole(Place::Name from) { return control(QStringLiteral("stop"), from); }

QCoro::Task<> AppModel::restartPihole() { return control(QStringLiteral("restart"), Place::Dashboard); }

QCoro::Task<> AppModel::control(QString verb, Place::Name from)
{
    if (busy().contains(kContainerKey)) co_return;
    setStartPlace(from);
    const BusyKey mark(this, kContainerKey);
    const QPointer<AppModel> alive(this);
    setStartMessage({});
    const QStringList command{verb, QStringLiteral("pihole")};
    const CommandResult result = co_await DockerCLI::run(command, kStopTimeout);
    if (!alive) co_return;
    if (!result.succeeded()) setStartMessage(DockerCLI::friendlyError(result.combined()));
    co_await refreshStatus(true);
}

QCoro::Task<> AppModel::toggleStartStop()
{
    if (containerState().isRunning())
        co_await stopPihole(Place::Menu);
    else
        co_await startPiholeNow(Place::Menu);
}

} // namespace corvane
