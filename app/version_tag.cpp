#include "app/version_tag.h"

#include <QRegularExpression>

#include <algorithm>
#include <limits>

namespace corvane {

bool isVersionTag(const QString &text)
{
    static const QRegularExpression pattern(
        QRegularExpression::anchoredPattern(QStringLiteral("[0-9]{4}\\.[0-9]{2}\\.[0-9]+")));
    return pattern.match(text).hasMatch();
}

QList<qint64> versionParts(const QString &tag)
{
    QList<qint64> parts;
    const QStringList pieces = tag.split(u'.', Qt::SkipEmptyParts);
    for (const QString &piece : pieces) {
        bool fits = false;
        const qint64 number = piece.toLongLong(&fits);
        parts.append(fits ? number : std::numeric_limits<qint64>::max());
    }
    return parts;
}

bool isNewer(const QString &tag, const QString &other)
{
    return tag != other && !std::ranges::lexicographical_compare(versionParts(tag), versionParts(other));
}

} // namespace corvane
