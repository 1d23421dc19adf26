#include "ui/decisions/repair_texts.h"

#include <algorithm>

namespace corvane {

namespace {

QString timesText(int times)
{
    if (times == 1) return QStringLiteral("once");
    return times == 2 ? QStringLiteral("twice") : QStringLiteral("%1 times").arg(times);
}

QString byWhat(const BlockedName &name)
{
    if (name.by == BlockedName::By::Rule)
        return name.what.isEmpty() ? QStringLiteral("by a rule of yours")
                                   : QStringLiteral("by your rule %1").arg(name.what);
    return name.what.isEmpty() ? QStringLiteral("by a block list") : QStringLiteral("by the list %1").arg(name.what);
}

QString detailOf(const BlockedName &name)
{
    switch (name.by) {
    case BlockedName::By::Corvane:
        return QStringLiteral("Blocked by Corvane's own rule, which keeps browsers with Pi-hole.");
    case BlockedName::By::Upstream:
        return QStringLiteral("Blocked by the DNS server that Pi-hole asks. Pi-hole cannot allow it.");
    case BlockedName::By::Itself:
        return QStringLiteral("Blocked by Pi-hole itself, so that no program goes around it.");
    case BlockedName::By::List:
    case BlockedName::By::Rule:
        break;
    }
    const QString often = timesText(name.times);
    if (name.behind.isEmpty()) return QStringLiteral("Blocked %1 %2.").arg(often, byWhat(name));
    return QStringLiteral("Blocked %1: it leads to %2, which is blocked %3.").arg(often, name.behind, byWhat(name));
}

QString untilText(const Permission &permission)
{
    if (!permission.end) return QStringLiteral("Allowed always.");
    return QStringLiteral("Allowed until %1.").arg(permission.end->toLocalTime().toString(QStringLiteral("HH:mm")));
}

} // namespace

QList<Row> blockedRows(const QList<BlockedName> &names, bool isNew, const QList<Permission> &permissions)
{
    QList<Row> rows;
    for (const BlockedName &name : names) {
        if (name.isNew != isNew || rows.size() == kMostNames) continue;
        const auto permission = std::ranges::find(permissions, name.name, &Permission::name);
        const bool allowed = permission != permissions.end();
        Row row;
        row.id = name.name;
        row.title = name.name;
        row.detail = allowed ? untilText(*permission) : detailOf(name);
        row.enabled = name.canBeAllowed() && !allowed;
        rows.append(row);
    }
    return rows;
}

QString moreNames(const QList<BlockedName> &names, bool isNew)
{
    const qsizetype more = std::ranges::count(names, isNew, &BlockedName::isNew) - kMostNames;
    if (more <= 0) return {};
    return more == 1 ? QStringLiteral("And one older name.") : QStringLiteral("And %1 older names.").arg(more);
}

QList<Row> permissionRows(const QList<Permission> &permissions)
{
    QList<Row> rows;
    for (const Permission &permission : permissions) {
        Row row;
        row.id = permission.name;
        row.title = permission.name;
        row.detail = untilText(permission);
        rows.append(row);
    }
    return rows;
}

QString noNamesText(const QList<BlockedName> &names, int privacyLevel, const QString &trouble)
{
    if (!trouble.isEmpty()) return trouble;
    if (privacyLevel > 0)
        return QStringLiteral("Pi-hole hides the names in its log (its privacy level is %1), so nobody can see which "
                              "were blocked. The level is set on Pi-hole's web page, under Settings, Privacy.")
            .arg(privacyLevel);
    if (std::ranges::count(names, true, &BlockedName::isNew) > 0) return {};
    return QStringLiteral("Nothing was blocked since. If the page still does not load, it is not Pi-hole.");
}

} // namespace corvane
