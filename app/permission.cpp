#include "app/permission.h"

namespace corvane {

namespace {

const QString kForGood = QStringLiteral("Allowed in Corvane");
const QString kUntil = QStringLiteral("Allowed in Corvane until ");
/// What two clocks, or two seconds, may differ by.
constexpr qint64 kSlack = 60; // seconds

} // namespace

bool Permission::isOver(const QDateTime &now) const
{
    if (!end) return false;
    const qint64 left = now.secsTo(*end);
    return left <= 0 || left > kHour + kSlack;
}

PiholeRule Permission::rule() const
{
    const QString comment = end ? kUntil + end->toUTC().toString(Qt::ISODate) : kForGood;
    return {PiholeRule::Kind::AllowedName, name, comment};
}

std::optional<Permission> Permission::of(const PiholeRule &rule)
{
    if (rule.kind != PiholeRule::Kind::AllowedName) return std::nullopt;
    if (rule.comment == kForGood) return Permission{rule.domain, std::nullopt};
    if (!rule.comment.startsWith(kUntil)) return std::nullopt;
    const QDateTime end = QDateTime::fromString(rule.comment.mid(kUntil.size()), Qt::ISODate);
    // Somebody has rewritten the comment: what cannot be read is not taken away.
    if (!end.isValid()) return Permission{rule.domain, std::nullopt};
    return Permission{rule.domain, end};
}

QString nameForRule(const QString &name)
{
    QString bare = name.trimmed().toLower();
    while (bare.endsWith(u'.'))
        bare.chop(1);
    return bare;
}

} // namespace corvane
