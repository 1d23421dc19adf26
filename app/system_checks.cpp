#include "app/app_model.h"
#include "app/wizard_steps.h"
#include "checks/port_checker.h"
#include "platform/system_facts.h"
#include "runtime/colima_manager.h"
#include "runtime/docker_cli.h"
#include "runtime/pihole_controller.h"

#include <algorithm>

namespace corvane {

namespace {

CheckRow cpuRow()
{
    const bool appleSilicon = platform::hasArm64() == 1;
    return {QStringLiteral("cpu"), QStringLiteral("Apple silicon"), appleSilicon ? CheckState::Ok : CheckState::Warning,
            appleSilicon
                ? QStringLiteral("This is an Apple silicon Mac.")
                : QStringLiteral("This looks like an Intel Mac. Pi-hole also has an Intel image, but this wizard "
                                 "was designed for Apple silicon.")};
}

CheckRow osRow()
{
    const platform::OsVersion version = platform::osVersion();
    const bool supported = version.major >= 13;
    const QString name = QStringLiteral("macOS %1.%2").arg(version.major).arg(version.minor);
    return {QStringLiteral("os"), QStringLiteral("macOS version"), supported ? CheckState::Ok : CheckState::Failed,
            name + (supported ? QStringLiteral(" is supported.")
                              : QStringLiteral(" is too old. macOS 13 or newer is needed."))};
}

CheckRow brewRow(bool found, bool needed)
{
    const QString id = QStringLiteral("brew");
    const QString title = QStringLiteral("Homebrew");
    if (found) return {id, title, CheckState::Ok, QStringLiteral("Found.")};
    if (!needed)
        return {id, title, CheckState::Warning, QStringLiteral("Not found, but you do not need it right now.")};
    return {
        id, title, CheckState::Failed,
        QStringLiteral("Not found. It is needed to install Colima and Docker (the wizard never installs Homebrew for "
                       "you).")};
}

CheckRow toolRow(const QString &tool, bool found, const std::optional<QString> &path)
{
    if (!found)
        return {tool, tool, CheckState::Failed,
                QStringLiteral("Not found. Step %1 can install it.").arg(stepNumber(WizardStep::Install))};
    return {tool, tool, CheckState::Ok, path.value_or(QStringLiteral("Found."))};
}

CheckRow portsRow(int webPort, const QList<PortReport> &reports)
{
    const auto any = [&reports](PortProbe probe) { return std::ranges::count(reports, probe, &PortReport::probe) > 0; };
    CheckRow row{QStringLiteral("ports"), QStringLiteral("Ports 53 and %1").arg(webPort), CheckState::Ok,
                 QStringLiteral("All free.")};
    if (any(PortProbe::InUse)) {
        row.state = CheckState::Failed;
        row.detail = QStringLiteral("At least one port is already in use. Details are below.");
    } else if (any(PortProbe::Denied) || any(PortProbe::Failed)) {
        row.state = CheckState::Warning;
        row.detail = QStringLiteral("macOS did not let this app test every port without administrator rights. The real "
                                    "test happens when Pi-hole starts.");
    }
    return row;
}

} // namespace

Flow<> AppModel::runSystemChecks()
{
    if (!m_activities.mayBegin(Activity::Checks)) co_return;
    const ActivityMark mark(m_activities, Activity::Checks);
    co_await boundTo(mark);

    co_await refreshTools();
    CheckRows rows{cpuRow(), osRow(), brewRow(hasBrew(), !hasDocker() || !hasColima()),
                   toolRow(QStringLiteral("docker"), hasDocker(), DockerCLI::find()),
                   toolRow(QStringLiteral("colima"), hasColima(), ColimaManager::find())};

    const ContainerState container = co_await PiholeController::containerState();
    setContainerState(container);
    if (container.isRunning()) {
        setPortReports({});
        rows.append({QStringLiteral("ports"), QStringLiteral("Ports 53 and %1").arg(webPort()), CheckState::Ok,
                     QStringLiteral("Used by the Pi-hole container, as expected.")});
    } else {
        const QList<PortReport> reports = co_await PortChecker::checkAll(webPort());
        setPortReports(reports);
        rows.append(portsRow(webPort(), reports));
    }
    setSystemChecks(rows);
}

} // namespace corvane
