#include "app/app_model.h"
#include "app/file_work.h"

#include <QDateTime>
#include <QFileInfo>
#include <QPointer>

namespace corvane {

namespace {

FilePanel zipPanel(FilePanel::Purpose purpose)
{
    FilePanel panel;
    panel.purpose = purpose;
    panel.suffix = QStringLiteral("zip");
    return panel;
}

} // namespace

QCoro::Task<> AppModel::exportBackup()
{
    const QPointer<AppModel> alive(this);
    setNotice({});
    configureAPI();
    const auto archive = co_await m_api.teleporterDownload();
    if (!alive) co_return;
    if (!archive) {
        setNotice(QStringLiteral("Backup failed: ") + archive.error().description());
        co_return;
    }
    FilePanel panel = zipPanel(FilePanel::Purpose::Save);
    panel.proposedName = QStringLiteral("pihole-backup-") +
                         QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMdd-HHmmss")) +
                         QStringLiteral(".zip");
    const std::optional<QString> path = co_await m_dialogs.choose(panel);
    if (!alive || !path) co_return;
    const auto written = co_await writeFile(*path, archive->bytes);
    if (!alive) co_return;
    setNotice(written ? QStringLiteral("Backup saved to %1.").arg(QFileInfo(*path).fileName())
                      : QStringLiteral("Backup failed: ") + written.error());
}

QCoro::Task<> AppModel::importBackup()
{
    const QPointer<AppModel> alive(this);
    setNotice({});
    const FilePanel panel = zipPanel(FilePanel::Purpose::Open);
    const std::optional<QString> path = co_await m_dialogs.choose(panel);
    if (!alive || !path) co_return;
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
    if (!alive || !accepted) co_return;

    configureAPI();
    const auto archive = co_await readFile(*path);
    if (!alive) co_return;
    if (!archive) {
        setNotice(QStringLiteral("Restore failed: ") + archive.error());
        co_return;
    }
    const auto restored = co_await m_api.teleporterUpload(archive->bytes, name);
    if (!alive) co_return;
    if (!restored) {
        setNotice(QStringLiteral("Restore failed: ") + restored.error().description());
        co_return;
    }
    setNotice(QStringLiteral("Backup restored."));
    co_await refreshStatus(true);
}

} // namespace corvane
