#include "app/blocked_name.h"

#include <QHash>
#include <QStringList>

#include <algorithm>

namespace corvane {

namespace {

const QString kOurComments = QStringLiteral("Corvane");
/// The query log calls a list by its number turned round and moved by this.
constexpr qint64 kListShift = 2;

BlockedName::By groupOf(const QString &status)
{
    if (status.startsWith(QLatin1String("EXTERNAL"))) return BlockedName::By::Upstream;
    if (status.startsWith(QLatin1String("SPECIAL"))) return BlockedName::By::Itself;
    return status.startsWith(QLatin1String("GRAVITY")) ? BlockedName::By::List : BlockedName::By::Rule;
}

/// Fills in what blocked the question, as far as the lists and rules say.
void explain(BlockedName &blocked, const PiholeQuery &question, const QList<PiholeList> &lists,
             const QList<PiholeRule> &rules)
{
    if (!question.decidedBy) return;
    if (blocked.by == BlockedName::By::List) {
        const auto list = std::ranges::find(lists, -*question.decidedBy - kListShift, &PiholeList::id);
        if (list != lists.end()) blocked.what = listName(*list);
    } else if (blocked.by == BlockedName::By::Rule) {
        const auto rule = std::ranges::find(rules, *question.decidedBy, &PiholeRule::id);
        if (rule == rules.end()) return;
        blocked.what = rule->domain;
        if (rule->comment.startsWith(kOurComments)) blocked.by = BlockedName::By::Corvane;
    }
}

} // namespace

bool saysBlocked(const QString &status)
{
    static const QStringList words{QStringLiteral("GRAVITY"), QStringLiteral("REGEX"), QStringLiteral("DENYLIST")};
    return std::ranges::any_of(words, [&status](const QString &word) { return status.startsWith(word); });
}

QString listName(const PiholeList &list)
{
    const bool telling = !list.comment.isEmpty() && !list.comment.startsWith(QLatin1String("Migrated from "));
    if (telling) return list.comment.simplified();
    const qsizetype scheme = list.address.indexOf(QLatin1String("://"));
    return scheme < 0 ? list.address : list.address.mid(scheme + 3);
}

QList<BlockedName> blockedNames(const QList<PiholeQuery> &questions, double boundary, const QList<PiholeList> &lists,
                                const QList<PiholeRule> &rules)
{
    QList<BlockedName> names;
    QHash<QString, qsizetype> places;
    for (const PiholeQuery &question : questions) {
        const bool isNew = question.time > boundary;
        const auto place = places.constFind(question.domain);
        if (place != places.cend()) {
            BlockedName &known = names[*place];
            known.times += known.isNew == isNew ? 1 : 0;
            continue;
        }
        BlockedName blocked{question.domain, 1, groupOf(question.status), {}, question.cname, isNew};
        explain(blocked, question, lists, rules);
        places.insert(question.domain, names.size());
        names.append(blocked);
    }
    return names;
}

} // namespace corvane
