#include "ui/decisions/controls.h"

#include "app/admin_password.h"
#include "app/app_model.h"
#include "runtime/docker_cli.h"
#include "ui/decisions/steps.h"

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
    const bool prepares = !operationRuns && underWay.contains(Activity::StartPihole);
    return prepares ? QStringLiteral("Getting ready...") : QString();
}

QString updateInPreparation(Activities underWay, bool operationRuns)
{
    if (operationRuns || underWay.contains(Activity::Exchange)) return {};
    if (underWay.contains(Activity::Update)) return QStringLiteral("Saving a backup first...");
    return underWay.contains(Activity::BringBack) ? QStringLiteral("Getting ready...") : QString();
}

QString backupUnderWay(Activities underWay)
{
    if (underWay.contains(Activity::ExportBackup)) return QStringLiteral("Saving a backup...");
    return underWay.contains(Activity::ImportBackup) ? QStringLiteral("Restoring the backup...") : QString();
}

bool canStart(const ContainerState &container, bool operating) { return !operating && !container.isRunning(); }

bool canStopOrRestart(const ContainerState &container, bool operating) { return !operating && container.isRunning(); }

bool canChangePihole(bool operating, bool controlling) { return !operating && !controlling; }

bool canRefreshLists(bool canChangePihole, bool answering) { return canChangePihole && answering; }

bool canSetUpPihole(bool operating, bool dockerWorks, const QString &password)
{
    return !operating && dockerWorks && !AdminPassword::isTooShort(password) &&
           !AdminPassword::hasForbiddenCharacter(password);
}

bool canRemovePihole(bool operating, bool applyingDns) { return !operating && !applyingDns; }

bool canChangeDns(const QSet<QString> &chosen, bool restoring) { return !chosen.isEmpty() && !restoring; }

bool mustPickService(const QString &dnsMessage, bool anyService, const QSet<QString> &chosen)
{
    return dnsMessage.isEmpty() && anyService && chosen.isEmpty();
}

bool foundNoBrowser(bool mayRead, bool scanning, bool anyBrowser) { return mayRead && !scanning && !anyBrowser; }

bool returnGoesOn(int step, bool operating, const QSet<QString> &busy)
{
    static const QSet<QString> begunByButtons{
        QStringLiteral("container"),  QStringLiteral("checks"),  QStringLiteral("docker"),   QStringLiteral("pihole"),
        QStringLiteral("blocking"),   QStringLiteral("system"),  QStringLiteral("services"), QStringLiteral("applydns"),
        QStringLiteral("restoredns"), QStringLiteral("browser"),
    };
    return hasStepAfter(step) && !operating && !busy.intersects(begunByButtons);
}

bool startFailedOnPort(const QString &startMessage, const std::optional<QString> &failure)
{
    return startMessage == AppModel::kPortTaken || failure == DockerCLI::kPortInUse;
}

} // namespace corvane
