#include "exec/app_paths.h"

#include "platform/system_facts.h"

namespace corvane {

namespace {

QDir createdFolder(const QString &path)
{
    QDir folder(path);
    folder.mkpath(QStringLiteral("."));
    return folder;
}

} // namespace

QDir AppPaths::supportDir()
{
    const QString base =
        platform::applicationSupportDir().value_or(QDir::homePath() + QStringLiteral("/Library/Application Support"));
    return createdFolder(base + QStringLiteral("/Corvane"));
}

QDir AppPaths::backupsDir() { return createdFolder(supportDir().filePath(QStringLiteral("backups"))); }

QDir AppPaths::runningDir()
{
    constexpr auto ownerOnly = QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner;
    const QDir above = supportDir();
    const QString path = above.filePath(QStringLiteral("running"));
    // One that is there already may have been made by another hand.
    if (!above.mkdir(path, ownerOnly)) QFile::setPermissions(path, ownerOnly);
    return QDir(path);
}

} // namespace corvane
