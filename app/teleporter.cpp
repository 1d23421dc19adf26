#include "app/app_model.h"
#include "app/file_work.h"

#include <QDateTime>
#include <QFileInfo>

namespace corvane {

namespace {

constexpr std::chrono::milliseconds kBeforeRestart{500};

FilePanel zipPanel(FilePanel::Purpose purpose)
{
    FilePanel panel;
    panel.purpose = purpose;
    panel.suffix = QStringLiteral("zip");
    return panel;
}

/// Pi-hole takes archives by the end of their name, and only in small letters.
QString uploadName(const QString &name)
{
    const QString suffix = QStringLiteral(".zip");
    return name.endsWith(suffix, Qt::CaseInsensitive) ? name.chopped(suffix.size()) + suffix : name;
}

} // namespace

Flow<> AppModel::exportBackup()
{
    if (!mayBegin(Activity::ExportBackup, &AppModel::setNotice)) co_return;
    const ActivityMark mark(m_activities, Activity::ExportBackup);
    co_await boundTo(mark);
    setNotice({});
    const auto archive = co_await downloadSettings();
    if (!archive) {
        setNotice(QStringLiteral("Backup failed: ") + archive.error().description());
        co_return;
    }
    FilePanel panel = zipPanel(FilePanel::Purpose::Save);
    panel.proposedName = QStringLiteral("pihole-backup-") +
                         QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMdd-HHmmss")) +
                         QStringLiteral(".zip");
    const std::optional<QString> path = co_await m_dialogs.choose(panel);
    if (!path) co_return;
    const auto written = co_await writeFile(*path, archive->bytes);
    setNotice(written ? QStringLiteral("Backup saved to %1.").arg(QFileInfo(*path).fileName())
                      : QStringLiteral("Backup failed: ") + written.error());
}

Flow<> AppModel::importBackup()
{
    if (!mayBegin(Activity::ImportBackup, &AppModel::setNotice)) co_return;
    std::optional<ActivityMark> mark(std::in_place, m_activities, Activity::ImportBackup,
                                     ActivityMark::Begin::WhenAgreed);
    co_await boundTo(*mark);
    setNotice({});
    const FilePanel panel = zipPanel(FilePanel::Purpose::Open);
    const std::optional<QString> path = co_await m_dialogs.choose(panel);
    if (!path) co_return;
    const QString name = QFileInfo(*path).fileName();
    Alert question;
    question.title = QStringLiteral("Restore this backup?");
    question.text =
        QStringLiteral("Pi-hole's settings, lists and local DNS entries will be replaced by the contents of ") + name +
        u'.';
    question.accept = QStringLiteral("Restore backup");
    question.reject = QStringLiteral("Cancel");
    question.style = Alert::Style::Warning;
    const bool accepted = co_await m_dialogs.confirm(question);
    if (!accepted) co_return;

    mark->agreed();
    configureAPI();
    const auto archive = co_await readFile(*path);
    if (!archive) {
        setNotice(QStringLiteral("Restore failed: ") + archive.error());
        co_return;
    }
    const auto restored = co_await m_api.teleporterUpload(archive->bytes, uploadName(name));
    if (!restored) {
        setNotice(QStringLiteral("Restore failed: ") + restored.error().description());
        co_return;
    }
    setNotice(*restored ? QStringLiteral("Backup restored.")
                        : QStringLiteral("Restore failed: %1 holds no Pi-hole settings.").arg(name));
    m_browserRuleKeeper.lookAgain();
    // Pi-hole's answer is out before it restarts itself.
    mark.reset(); // looking on is in the way of nothing
    co_await m_clock.pause(kBeforeRestart);
    co_await refreshAfterStart();
}

} // namespace corvane
