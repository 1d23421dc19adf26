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

QString startInPreparation(Activities underWay, bool operationRuns)
{
    const bool prepares = !operationRuns && underWay.testFlag(Activity::StartPihole);
    return prepares ? QStringLiteral("Getting ready...") : QString();
}

QString updateInPreparation(Activities underWay, bool operationRuns)
{
    if (operationRuns || underWay.testFlag(Activity::Exchange)) return {};
    if (underWay.testFlag(Activity::Update)) return QStringLiteral("Saving a backup first...");
    return underWay.testFlag(Activity::BringBack) ? QStringLiteral("Getting ready...") : QString();
}

QString backupUnderWay(Activities underWay)
{
    if (underWay.testFlag(Activity::ExportBackup)) return QStringLiteral("Saving a backup...");
    return underWay.testFlag(Activity::ImportBackup) ? QStringLiteral("Restoring the backup...") : QString();
}

bool canStart(const ContainerState &container, bool operating) { return !operating && !container.isRunning(); }

bool canStopOrRestart(const ContainerState &container, bool operating) { return !operating && container.isRunning(); }

bool startFailedOnPort(const QString &startMessage, const std::optional<QString> &failure)
{
    return startMessage == AppModel::kPortTaken || failure == DockerCLI::kPortInUse;
}

} // namespace corvane
