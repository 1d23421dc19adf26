#include "app/list_verdict.h"

#include "app/blocked_name.h"

#include <QStringList>

#include <algorithm>

namespace corvane {

namespace {

/// A run that goes on is not worse than one that names what it lacks: no more than these are named one by one.
constexpr qsizetype kMostTold = 5;

QString troubleWith(const PiholeList &list, qint64 namesBefore)
{
    const QString name = listName(list);
    if (list.fetch == PiholeList::Fetch::Nothing)
        return QStringLiteral("%1 could not be fetched, and there is no old copy of it.").arg(name);
    if (list.names == 0 && (namesBefore > 0 || list.otherLines > 0))
        return QStringLiteral("%1 holds no name any more. A log-in page of the network may have answered in its place: "
                              "log in there, then refresh the lists again.")
            .arg(name);
    if (list.fetch == PiholeList::Fetch::OldCopy)
        return QStringLiteral("%1 could not be fetched. Its old copy stays in use.").arg(name);
    return {};
}

} // namespace

QString listsVerdict(bool loaded, bool empty)
{
    if (!loaded)
        return QStringLiteral("The block lists could not be loaded. Check this Mac's connection (and any VPN), then "
                              "try again.");
    return empty ? QStringLiteral("Pi-hole could not fetch any of its block lists. Check this Mac's connection (and "
                                  "any VPN), then try again.")
                 : QStringLiteral("The block lists are loaded.");
}

QString leftListsVerdict(bool ended)
{
    return ended ? QStringLiteral("The block lists were loaded while Corvane was closed.")
                 : QStringLiteral("Corvane was closed while Pi-hole loaded its block lists, and that run did not come "
                                  "to its end. The older lists are in use. Refresh them again.");
}

QString listTroubles(const QList<PiholeList> &before, const QList<PiholeList> &after)
{
    QStringList troubles;
    for (const PiholeList &list : after) {
        if (!list.enabled) continue;
        const auto known = std::ranges::find(before, list.id, &PiholeList::id);
        const QString trouble = troubleWith(list, known == before.end() ? 0 : known->names);
        if (!trouble.isEmpty()) troubles.append(trouble);
    }
    const qsizetype more = troubles.size() - kMostTold;
    if (more > 0) troubles = troubles.first(kMostTold) << QStringLiteral("And %1 more.").arg(more);
    return troubles.join(u'\n');
}

} // namespace corvane
