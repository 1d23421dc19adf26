#include "app/app_model.h"
#include "app/container_steps.h"
#include "app/file_work.h"
#include "app/operation.h"
#include "app/operation_title.h"
#include "app/release_feed.h"
#include "app/version_tag.h"
#include "checks/port_checker.h"
#include "exec/app_paths.h"
#include "runtime/pihole_controller.h"

#include <QDateTime>
#include <QFile>
#include <QPointer>

#include <algorithm>

namespace corvane {

namespace {

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

QString updateBackupPath(const QString &newTag)
{
    const QString time = QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMdd-HHmmss"));
    return AppPaths::backupsDir().filePath(QStringLiteral("pihole-backup-%1-before-%2.zip").arg(time, newTag));
}

/// Why the admin page cannot move to this port, as a sentence; empty when it can.
QString webPortProblem(int port)
{
    const auto probed = static_cast<quint16>(std::clamp(port, 0, 65535));
    if (PortChecker::probe(probed, false) == PortProbe::InUse)
        return QStringLiteral("Port %1 is already in use.").arg(port);
    // The next start would not take it from the settings.
    if (port < PersistedSettings::kDefaultWebPort || port > PersistedSettings::kLastWebPort)
        return QStringLiteral("Port %1 cannot be used. Pick one from 8080 to 8090.").arg(port);
    return {};
}

} // namespace

QCoro::Task<> AppModel::checkForUpdates()
{
    if (!m_activities.mayBegin(Activity::CheckForUpdates)) co_return;
    const ActivityMark mark(m_activities, Activity::CheckForUpdates);
    setUpdateMessage(
        QStringLiteral("Asking %1 for the newest version. Nothing about you is sent...").arg(m_releaseFeed.host()));
    const auto newest = co_await ReleaseFeed::newestTag(m_releaseFeed);
    if (!mark.stands()) co_return;
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
    if (!latestTag() || !mayBegin(Activity::Update, &AppModel::setUpdateMessage)) co_return;
    std::optional<ActivityMark> mark(std::in_place, m_activities, Activity::Update, ActivityMark::Begin::WhenAgreed);
    const QString newTag = *latestTag();
    const Alert question = updateQuestion(newTag);
    const bool accepted = co_await m_dialogs.confirm(question);
    if (!mark->stands() || !accepted) co_return;

    mark->agreed();
    m_activities.outdate(Activity::CheckForUpdates); // it would compare with a version that is about to change
    const QString failure = co_await saveBackupBefore(newTag);
    if (!mark->stands()) co_return;
    if (!failure.isEmpty()) {
        setUpdateMessage(QStringLiteral("The update was not started because the backup failed: ") + failure);
        co_return;
    }
    const bool updated = co_await runUpdate(newTag);
    if (!mark->stands()) co_return;
    mark.reset(); // nothing that follows stands in the way of anything
    if (updated) co_await runPiholeTests(true);
}

/// Saves Pi-hole's settings into the backups folder; answers why it could not, or nothing.
QCoro::Task<QString> AppModel::saveBackupBefore(QString newTag)
{
    const QPointer<AppModel> alive(this);
    const auto archive = co_await downloadSettings();
    if (!archive) co_return archive.error().description();
    if (!alive) co_return {};
    const auto written = co_await writeFile(updateBackupPath(newTag), archive->bytes);
    co_return written ? QString() : written.error();
}

/// Puts a container of the new version into the place of the old one; whether it did.
QCoro::Task<bool> AppModel::runUpdate(QString newTag)
{
    const QPointer<AppModel> alive(this);
    const WantedContainer wanted{newTag, webPort(), composeAvailable(), true};
    const auto steps = co_await containerSteps(wanted);
    if (!alive) co_return false;
    if (!steps) {
        setUpdateMessage(steps.error());
        co_return false;
    }
    if (steps->isEmpty()) {
        setNotice(QStringLiteral("docker was not found."));
        co_return false;
    }
    const QString oldTag = pinnedTag();
    setPinnedTag(newTag);
    const auto written = co_await writePiholeFiles(newTag, webPort(), adminPassword());
    if (!alive) co_return false;
    if (!written) {
        setPinnedTag(oldTag);
        // One of the two files may be the new one already. What stands in the way of that one is told all the same.
        [[maybe_unused]] const auto restored = PiholeController::writeFiles(oldTag, webPort(), adminPassword());
        setUpdateMessage(QStringLiteral("Could not write the new compose file: ") + written.error());
        co_return false;
    }
    const bool updated = co_await perform(&m_maintOp, QStringLiteral("Updating Pi-hole to ") + newTag, *steps);
    if (!alive) co_return false;
    if (updated) {
        setUpdateMessage(QStringLiteral("Updated to %1.").arg(newTag));
        setLatestTag(std::nullopt);
    } else {
        rollBack(oldTag);
    }
    co_return updated;
}

void AppModel::rollBack(const QString &oldTag)
{
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
    setNotice({});
    const auto changed = m_loginItem.setEnabled(on);
    if (!changed) setNotice(QStringLiteral("Could not change launch at login: ") + changed.error());
    publishLaunchAtLogin(m_loginItem.status() == LoginItem::Status::Enabled);
}

QCoro::Task<> AppModel::changeWebPort(int port)
{
    if (port == webPort() || !mayBegin(Activity::PortChange, &AppModel::setNotice)) co_return;
    std::optional<ActivityMark> mark(std::in_place, m_activities, Activity::PortChange);
    setNotice(passwordKnown() ? webPortProblem(port) : PiholeAPIError::noPassword().description());
    if (!notice().isEmpty()) co_return;
    const bool setUp = !adminPassword().isEmpty() && QFile::exists(PiholeController::composeFile());
    if (!setUp) { // There is no container to move yet.
        setWebPort(port);
        configureAPI();
        co_return;
    }
    const WantedContainer wanted{pinnedTag(), port, composeAvailable(), false};
    const auto steps = co_await containerSteps(wanted);
    if (!mark->stands()) co_return;
    if (!steps) {
        setNotice(steps.error());
        co_return;
    }
    if (!passwordKnown()) {
        setNotice(PiholeAPIError::noPassword().description());
        co_return;
    }
    setWebPort(port);
    configureAPI();
    if (const auto written = PiholeController::writeFiles(pinnedTag(), port, adminPassword()); !written) {
        setNotice(QStringLiteral("Could not write the new compose file: ") + written.error());
        co_return;
    }
    if (steps->isEmpty()) {
        setNotice(QStringLiteral("docker was not found."));
        co_return;
    }
    const QString title = QString(OperationTitle::kMovingPort).arg(port);
    const bool moved = co_await perform(&m_maintOp, title, *steps);
    if (!mark->stands()) co_return;
    if (!moved)
        setNotice(QStringLiteral("Pi-hole was not recreated on port %1: %2").arg(port).arg(m_maintOp.failureText()));
    mark.reset(); // looking on stands in the way of nothing
    co_await refreshAfterStart();
}

} // namespace corvane
