#include "ui/decisions/controls.h"

#include "app/app_model.h"
#include "runtime/docker_cli.h"

namespace corvane {

bool canStart(const ContainerState &container, bool operating) { return !operating && !container.isRunning(); }

bool canStopOrRestart(const ContainerState &container, bool operating) { return !operating && container.isRunning(); }

bool startFailedOnPort(const QString &startMessage, const std::optional<QString> &failure)
{
    return startMessage == AppModel::kPortTaken || failure == DockerCLI::kPortInUse;
}

} // namespace corvane
