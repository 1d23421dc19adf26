#include "app/app_model.h"
#include "app/file_work.h"
#include "app/release_feed.h"
#include "app/version_tag.h"
#include "checks/port_checker.h"
#include "dns/dns_configurator.h"
#include "exec/app_paths.h"
#include "exec/keychain.h"
#include "runtime/docker_cli.h"
#include "runtime/pihole_controller.h"

#include <QDateTime>
#include <QFile>
#include <QPointer>
#include <QScopeGuard>

#include <algorithm>

namespace corvane {

namespace {

constexpr double kRemoveTimeout = 60;        // seconds
constexpr double kRemoveVolumesTimeout = 30; // seconds

Alert updateQuestion(const QString &tag)
{
    Alert alert;
    alert.title = QStringLiteral("Update Pi-hole to %1?").arg(tag);
    alert.text =
        QStringLiteral("A backup is saved first, then the new image is downloaded and Pi-hole restarts. Your data "
                       "volumes are never deleted.");
    alert.accept = QStringLiteral("Update");
    alert.reject = QStringLiteral("Cancel");
    return alert;
}

Alert removalQuestion()
{
    Alert alert;
    alert.title = QStringLiteral("Remove Pi-hole?");
    alert.text = QStringLiteral("This removes the container 'pihole' and its two data volumes 'pihole_etc' and "
                                "'pihole_dnsmasq'. Your saved DNS settings are restored first (administrator prompt). "
                                "Colima and Docker stay installed.");
    alert.accept = QStringLiteral("Remove Pi-hole");
    alert.reject = QStringLiteral("Cancel");
    return alert;
}

QString updateBackupPath(const QString &newTag)
{
    const QString time = QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMdd-HHmmss"));
    return AppPaths::backupsDir().filePath(QStringLiteral("pihole-backup-%1-before-%2.zip").arg(time, newTag));
}

bool anyPointsAtPihole(const QList<NetworkService> &services)
{
    return std::ranges::any_of(
        services, [](const NetworkService &service) { return service.servers.contains(QStringLiteral("127.0.0.1")); });
}

} // namespace

QCoro::Task<> AppModel::checkForUpdates()
{
    const QPointer<AppModel> alive(this);
    setUpdateMessage(
        QStringLiteral("Asking %1 for the newest version. Nothing about you is sent...").arg(m_releaseFeed.host()));
    const auto newest = co_await ReleaseFeed::newestTag(m_releaseFeed);
    if (!alive) co_return;
    if (!newest) {
        setUpdateMessage(QStringLiteral("Could not check for updates: ") + newest.error());
    } else if (!*newest) {
        setUpdateMessage(QStringLiteral("Could not read the newest version."));
    } else if (isNewer(**newest, pinnedTag())) {
        setLatestTag(**newest);
        setUpdateMessage(QStringLiteral("Version %1 is available (you have %2).").arg(**newest, pinnedTag()));
    } else {
        setLatestTag(std::nullopt);
        setUpdateMessage(QStringLiteral("You have the newest version (%1).").arg(pinnedTag()));
    }
}

QCoro::Task<> AppModel::performUpdate()
{
    if (!latestTag() || m_updating || operationRunning()) co_return;
    const QPointer<AppModel> alive(this);
    m_updating = true;
    const auto done = qScopeGuard([alive] {
        if (alive) alive->m_updating = false;
    });
    const QString newTag = *latestTag();
    const Alert question = updateQuestion(newTag);
    const bool accepted = co_await m_dialogs.confirm(question);
    if (!alive || !accepted) co_return;

    const QString failure = co_await saveBackupBefore(newTag);
    if (!alive) co_return;
    if (!failure.isEmpty()) {
        setUpdateMessage(QStringLiteral("The update was not started because the backup failed: ") + failure);
        co_return;
    }
    if (operationRunning()) co_return;
    startUpdate(newTag);
}

/// Saves Pi-hole's settings into the backups folder; answers why it could not, or nothing.
QCoro::Task<QString> AppModel::saveBackupBefore(QString newTag)
{
    const QPointer<AppModel> alive(this);
    configureAPI();
    const auto archive = co_await m_api.teleporterDownload();
    if (!archive) co_return archive.error().description();
    if (!alive) co_return {};
    const auto written = co_await writeFile(updateBackupPath(newTag), archive->bytes);
    co_return written ? QString() : written.error();
}

void AppModel::startUpdate(const QString &newTag)
{
    const CommandSteps pull = PiholeController::pullSteps(newTag, composeAvailable());
    if (pull.isEmpty()) {
        setNotice(QStringLiteral("docker was not found."));
        return;
    }
    const QString oldTag = pinnedTag();
    setPinnedTag(newTag);
    if (const auto written = PiholeController::writeFiles(newTag, webPort(), adminPassword()); !written) {
        setPinnedTag(oldTag);
        setUpdateMessage(QStringLiteral("Could not write the new compose file: ") + written.error());
        return;
    }
    m_maintOp.start(QStringLiteral("Updating Pi-hole to ") + newTag,
                    pull + PiholeController::upSteps(newTag, webPort(), composeAvailable()),
                    [this, oldTag, newTag](bool succeeded) { launch(finishUpdate(succeeded, oldTag, newTag)); });
}

QCoro::Task<> AppModel::finishUpdate(bool succeeded, QString oldTag, QString newTag)
{
    if (succeeded) {
        setUpdateMessage(QStringLiteral("Updated to %1.").arg(newTag));
        setLatestTag(std::nullopt);
        co_await runPiholeTests(true);
        co_return;
    }
    setPinnedTag(oldTag);
    QString message =
        QStringLiteral("The update did not finish; the pinned version is back to %1. Use Start/Restart if "
                       "Pi-hole is not running.")
            .arg(oldTag);
    const auto written = PiholeController::writeFiles(oldTag, webPort(), adminPassword());
    if (!written) message += QStringLiteral(" Could not write the new compose file: ") + written.error();
    setUpdateMessage(message);
}

void AppModel::setLaunchAtLogin(bool on)
{
    const auto changed = m_loginItem.setEnabled(on);
    if (!changed) setNotice(QStringLiteral("Could not change launch at login: ") + changed.error());
    publishLaunchAtLogin(m_loginItem.status() == LoginItem::Status::Enabled);
}

QCoro::Task<> AppModel::changeWebPort(int port)
{
    if (port == webPort() || operationRunning()) co_return;
    const auto probed = static_cast<quint16>(std::clamp(port, 0, 65535));
    if (PortChecker::probe(probed, false) == PortProbe::InUse) {
        setNotice(QStringLiteral("Port %1 is already in use.").arg(port));
        co_return;
    }
    setWebPort(port);
    configureAPI();
    const bool setUp = !adminPassword().isEmpty() && QFile::exists(PiholeController::composeFile());
    if (!setUp) co_return; // There is no container to move yet.
    if (const auto written = PiholeController::writeFiles(pinnedTag(), port, adminPassword()); !written) {
        setNotice(QStringLiteral("Could not write the new compose file: ") + written.error());
        co_return;
    }
    const CommandSteps steps = PiholeController::upSteps(pinnedTag(), port, composeAvailable());
    if (steps.isEmpty()) {
        setNotice(QStringLiteral("docker was not found."));
        co_return;
    }
    m_maintOp.start(QStringLiteral("Recreating Pi-hole on port %1").arg(port), steps,
                    [this](bool succeeded) { finishPortChange(succeeded); });
}

void AppModel::finishPortChange(bool succeeded)
{
    if (!succeeded) {
        setNotice(
            QStringLiteral("Pi-hole was not recreated on port %1: %2").arg(webPort()).arg(m_maintOp.failureText()));
    }
    launch(refreshStatus(true));
}

QCoro::Task<> AppModel::removePihole()
{
    if (operationRunning() || changesDns() || m_removing) co_return;
    const QPointer<AppModel> alive(this);
    m_removing = true;
    const auto done = qScopeGuard([alive] {
        if (alive) alive->m_removing = false;
    });
    const Alert question = removalQuestion();
    const bool accepted = co_await m_dialogs.confirm(question);
    if (!alive || !accepted || operationRunning() || changesDns()) co_return;

    const QList<NetworkService> found = co_await DNSConfigurator::listServices();
    if (!alive) co_return;
    if (anyPointsAtPihole(found) || QFile::exists(DNSConfigurator::backupFile())) {
        const std::optional<QString> failure = co_await DNSConfigurator::restore();
        if (!alive) co_return;
        if (failure) {
            setNotice(QStringLiteral("Pi-hole was not removed because your DNS could not be restored: ") + *failure);
            co_return;
        }
    }
    co_await removeContainer();
    if (!alive) co_return;
    co_await refreshStatus(false);
}

QCoro::Task<> AppModel::removeContainer()
{
    const QPointer<AppModel> alive(this);
    const QStringList removal{QStringLiteral("rm"), QStringLiteral("-f"), QStringLiteral("pihole")};
    const CommandResult container = co_await DockerCLI::run(removal, kRemoveTimeout);
    const QStringList volumeRemoval{QStringLiteral("volume"), QStringLiteral("rm"), QStringLiteral("pihole_etc"),
                                    QStringLiteral("pihole_dnsmasq")};
    const CommandResult volumes = co_await DockerCLI::run(volumeRemoval, kRemoveVolumesTimeout);
    if (!alive) co_return;

    QFile::remove(PiholeController::composeFile());
    QFile::remove(PiholeController::environmentFile());
    Keychain::remove();
    setAdminPassword({});
    setOutcomes({});
    setWizardFinished(false);
    setShowWizard(true);
    const CommandResult &failed = container.succeeded() ? volumes : container;
    setNotice(failed.succeeded() ? QStringLiteral("Pi-hole was removed.")
                                 : QStringLiteral("Docker could not remove everything: ") +
                                       DockerCLI::friendlyError(failed.combined()));
}

} // namespace corvane
