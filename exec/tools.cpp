#include "exec/tools.h"

#include <QByteArrayView>
#include <QFileInfo>

extern char **environ;

namespace corvane {

const QStringList &Tools::searchDirs()
{
    // Never destroyed: a worker thread may outlive main().
    static const QStringList &dirs = *new QStringList{
        QStringLiteral("/opt/homebrew/bin"),
        QStringLiteral("/usr/local/bin"),
        QStringLiteral("/usr/bin"),
        QStringLiteral("/bin"),
        QStringLiteral("/usr/sbin"),
        QStringLiteral("/sbin"),
        QStringLiteral("/Applications/Docker.app/Contents/Resources/bin"),
    };
    return dirs;
}

std::optional<QString> Tools::find(const QString &name, const QStringList &dirs)
{
    for (const QString &dir : dirs) {
        const QFileInfo candidate(dir + u'/' + name);
        if (candidate.isFile() && candidate.isExecutable()) return candidate.filePath();
    }
    return std::nullopt;
}

QMap<QByteArray, QByteArray> Tools::environment(const Environment &extra)
{
    QMap<QByteArray, QByteArray> result;
    for (char **entry = environ; *entry; ++entry) {
        const QByteArrayView variable(*entry);
        const qsizetype nameEnd = variable.indexOf('=');
        if (nameEnd <= 0) continue;
        result.insert(variable.first(nameEnd).toByteArray(), variable.sliced(nameEnd + 1).toByteArray());
    }
    result.insert("PATH", searchDirs().join(u':').toUtf8());
    for (auto it = extra.begin(); it != extra.end(); ++it)
        result.insert(it.key().toUtf8(), it.value().toUtf8());
    return result;
}

} // namespace corvane
