#include "app/app_model.h"
#include "app/container_steps.h"
#include "app/file_work.h"
#include "app/operation.h"
#include "app/release_feed.h"
#include "app/version_tag.h"
#include "exec/app_paths.h"

#include <QDateTime>

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

} // namespace

Flow<> AppModel::checkForUpdates()
{
    if (!m_activities.mayBegin(Activity::CheckForUpdates)) co_return;
    const ActivityMark mark(m_activities, Activity::CheckForUpdates);
    co_await boundTo(mark);
    setUpdateMessage(
        QStringLiteral("Asking %1 for the newest version. Nothing about you is sent...").arg(m_releaseFeed.host()));
    const auto newest = co_await ReleaseFeed::newestTag(m_releaseFeed);
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

Flow<> AppModel::performUpdate()
{
    if (!latestTag() || !mayBegin(Activity::Update, &AppModel::setUpdateMessage)) co_return;
    std::optional<ActivityMark> mark(std::in_place, m_activities, Activity::Update, ActivityMark::Begin::WhenAgreed);
    co_await boundTo(*mark);
    const QString newTag = *latestTag();
    const Alert question = updateQuestion(newTag);
    const bool accepted = co_await m_dialogs.confirm(question);
    if (!accepted) co_return;

    mark->agreed();
    m_activities.outdate(Activity::CheckForUpdates); // it would compare with a version that is about to change
    const QString failure = co_await saveBackupBefore(newTag);
    if (!failure.isEmpty()) {
        setUpdateMessage(QStringLiteral("The update was not started because the backup failed: ") + failure);
        co_return;
    }
    const bool updated = co_await runUpdate(newTag);
    mark.reset(); // nothing that follows is in the way of anything
    co_await lookAfterExchange(updated);
    co_await putRight();
}

/// Tests a container that has just been made; else shows what is there.
Flow<> AppModel::lookAfterExchange(bool made)
{
    if (made)
        co_await runPiholeTests(Wait::ForStart);
    else
        co_await refreshStatus(Stats::Include);
}

/// Saves Pi-hole's settings into the backups folder; answers why it could not, or nothing.
Flow<QString> AppModel::saveBackupBefore(QString newTag)
{
    const auto archive = co_await downloadSettings();
    if (!archive) co_return archive.error().description();
    const auto written = co_await writeFile(updateBackupPath(newTag), archive->bytes);
    co_return written ? QString() : written.error();
}

/// Puts a container of the new version into the place of the old one; whether it did.
Flow<bool> AppModel::runUpdate(QString newTag)
{
    const WantedContainer wanted{.tag = newTag, .webPort = webPort(), .compose = composeAvailable(), .pull = true};
    const auto steps = co_await containerSteps(wanted);
    if (!steps) {
        setUpdateMessage(steps.error());
        co_return false;
    }
    co_return co_await exchangeVersion(newTag, *steps);
}

/// Pins the new version and runs the steps; pins the old one again when they fail.
Flow<bool> AppModel::exchangeVersion(QString newTag, CommandSteps steps)
{
    const ActivityMark exchange(m_activities, Activity::Exchange);
    m_compared.reset();
    const QString oldTag = pinnedTag();
    m_left.keep(oldTag); // first: a user who is cut off from here on finds the way back
    const QString unwritten = co_await pin(newTag);
    bool updated = false;
    if (unwritten.isEmpty() && exchange.stands())
        updated = co_await perform(&m_maintOp, QStringLiteral("Updating Pi-hole to ") + newTag, steps);
    if (updated) {
        setUpdateMessage(QStringLiteral("Updated to %1.").arg(newTag));
        setLatestTag(std::nullopt);
        co_return true;
    }
    // One of the two files may be the new one already.
    const QString stillUnwritten = co_await pin(oldTag);
    if (unwritten.isEmpty())
        tellOfRollback(stillUnwritten);
    else
        setUpdateMessage(kComposeNotWritten + unwritten);
    co_return false;
}

/// Makes this the pinned version, in the settings and in the files; answers why these could not be written, or nothing.
Flow<QString> AppModel::pin(QString tag)
{
    setPinnedTag(tag);
    const auto written = co_await writeFiles();
    co_return written ? QString() : written.error();
}

/// Writes the two files that describe the container of the pinned version, the port and the password now in force.
QCoro::Task<std::expected<void, QString>> AppModel::writeFiles() const
{
    return writePiholeFiles(pinnedTag(), webPort(), adminPassword());
}

void AppModel::tellOfRollback(const QString &unwritten)
{
    const QString message =
        QStringLiteral("The update did not finish; the pinned version is back to %1. Use Start/Restart if "
                       "Pi-hole is not running.")
            .arg(pinnedTag());
    setUpdateMessage(unwritten.isEmpty() ? message : message + u' ' + kComposeNotWritten + unwritten);
}

void AppModel::setLaunchAtLogin(bool on)
{
    setNotice({});
    const auto changed = m_loginItem.setEnabled(on);
    if (!changed) setNotice(QStringLiteral("Could not change launch at login: ") + changed.error());
    publishLaunchAtLogin(m_loginItem.status() == LoginItem::Status::Enabled);
}

} // namespace corvane
