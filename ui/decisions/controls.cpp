#include "ui/decisions/controls.h"

#include "app/app_model.h"
#include "runtime/docker_cli.h"

namespace corvane {

bool operating(bool operationRuns, Activities underWay)
{
    using enum Activity;
    constexpr Activities kOperations = Install | StartColima | Autostart | UdpFix | StartPihole | Update | BringBack |
                                       PortChange | Removal | ExportBackup | ImportBackup;
    return operationRuns || (underWay & kOperations);
}

bool canStart(const ContainerState &container, bool operating) { return !operating && !container.isRunning(); }

bool canStopOrRestart(const ContainerState &container, bool operating) { return !operating && container.isRunning(); }

bool startFailedOnPort(const QString &startMessage, const std::optional<QString> &failure)
{
    return startMessage == AppModel::kPortTaken || failure == DockerCLI::kPortInUse;
}

} // namespace corvane
