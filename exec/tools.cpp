#include "exec/tools.h"

#include <QByteArrayView>
#include <QFileInfo>

extern char **environ;

namespace corvane {

const QStringList &Tools::searchDirs()
{
    static const QStringList kSearchDirs{
        QStringLiteral("/opt/homebrew/bin"),
        QStringLiteral("/usr/local/bin"),
        QStringLiteral("/usr/bin"),
        QStringLiteral("/bin"),
        QStringLiteral("/usr/sbin"),
        QStringLiteral("/sbin"),
        QStringLiteral("/Applications/Docker.app/Contents/Resources/bin"),
    };
    return kSearchDirs;
}

std::optional<QString> Tools::find(const QString &name, const QStringList &dirs)
{
    for (const QString &dir : dirs) {
        const QFileInfo candidate(dir + u'/' + name);
        if (candidate.isFile() && candidate.isExecutable()) return candidate.filePath();
    }
    return std::nullopt;
}

Environment Tools::environment(const Environment &extra)
{
    Environment result;
    for (char **entry = environ; *entry; ++entry) {
        const QByteArrayView variable(*entry);
        const qsizetype nameEnd = variable.indexOf('=');
        if (nameEnd <= 0) continue;
        result.insert(QString::fromUtf8(variable.first(nameEnd)), QString::fromUtf8(variable.sliced(nameEnd + 1)));
    }
    result.insert(QStringLiteral("PATH"), searchDirs().join(u':'));
    result.insert(extra);
    return result;
}

} // namespace corvane
