#include "app/app_model.h"
#include "app/container_steps.h"
#include "app/file_work.h"
#include "app/operation.h"
#include "app/operation_title.h"
#include "app/wizard_steps.h"
#include "checks/port_checker.h"
#include "runtime/pihole_controller.h"

#include <QFile>

#include <algorithm>

namespace corvane {

namespace {

const QString kNoPassword =
    QStringLiteral("The port was not changed: the admin password is neither in your Keychain nor in Pi-hole's file. "
                   "Set one in step %1 of the wizard first.")
        .arg(stepNumber(WizardStep::Pihole));

const QString kGone = QStringLiteral(" There is no container of Pi-hole at the moment. Press Start to get it back.");

/// Why the admin page cannot move to this port, as a sentence; empty when it can. `ours`: where the container has it.
QString webPortProblem(int port, int ours)
{
    const auto probed = static_cast<quint16>(std::clamp(port, 0, 65535));
    if (port != ours && PortChecker::probe(probed, Transport::Tcp) == PortProbe::InUse)
        return QStringLiteral("Port %1 is already in use.").arg(port);
    // The next start would not take it from the settings.
    if (!WebPorts::contain(port))
        return QStringLiteral("Port %1 cannot be used. Pick one from %2 to %3.")
            .arg(port)
            .arg(WebPorts::kDefault)
            .arg(WebPorts::kLast);
    return {};
}

} // namespace

Flow<> AppModel::changeWebPort(int port)
{
    if (port == webPort() || !mayBegin(Activity::PortChange, &AppModel::setNotice)) co_return;
    std::optional<ActivityMark> mark(std::in_place, m_activities, Activity::PortChange);
    co_await boundTo(*mark);
    setNotice(passwordKnown() ? QString() : PiholeAPIError::noPassword().description());
    if (!notice().isEmpty()) co_return;
    const std::optional<DeployedContainer> deployed = co_await PiholeController::deployed();
    setNotice(webPortProblem(port, deployed ? deployed->webPort : 0));
    if (!notice().isEmpty()) co_return;
    if (!(deployed && deployed->exists) &&
        !QFile::exists(PiholeController::composeFile())) { // There is no container to move yet.
        setWebPort(port);
        configureAPI();
        co_return;
    }
    if (adminPassword().isEmpty() && !QFile::exists(PiholeController::environmentFile())) {
        setNotice(kNoPassword);
        co_return;
    }
    const WantedContainer wanted{.tag = pinnedTag(), .webPort = port, .compose = composeAvailable()};
    const auto steps = co_await containerSteps(wanted);
    if (!steps) {
        setNotice(steps.error());
        co_return;
    }
    co_await movePihole(port, *steps);
    mark.reset(); // looking on is in the way of nothing
    co_await refreshAfterStart();
    co_await putRight();
}

/// Makes a new container at the port; goes back to the old one when it cannot, and says why.
Flow<> AppModel::movePihole(int port, CommandSteps steps)
{
    const ActivityMark exchange(m_activities, Activity::Exchange);
    m_compared.reset();
    const int oldPort = webPort();
    setWebPort(port);
    configureAPI();
    const auto written = co_await writeFiles();
    QString problem = written ? QString() : kComposeNotWritten + written.error();
    if (written && exchange.stands()) {
        const QString title = QString(OperationTitle::kMovingPort).arg(port);
        const bool moved = co_await perform(&m_maintOp, title, steps);
        if (moved) co_return;
        problem = QStringLiteral("Pi-hole was not recreated on port %1: %2 The web port is %3 again.")
                      .arg(QString::number(port), m_maintOp.failureSentence(), QString::number(oldPort));
        const ContainerState left = co_await PiholeController::containerState();
        if (left.isMissing()) problem += kGone;
    }
    setWebPort(oldPort);
    configureAPI();
    setNotice(problem);
    [[maybe_unused]] const auto restored = co_await writeFiles();
}

} // namespace corvane
