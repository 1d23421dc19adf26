#include "app/flow.h"
#include "app/repair.h"
#include "runtime/pihole_controller.h"

#include <QLocale>

#include <algorithm>

namespace corvane {

namespace {

/// A rule works 20 to 110 milliseconds after Pi-hole's answer.
constexpr std::chrono::milliseconds kUntilItWorks{150};
constexpr int kLookups = 5;
/// From then on a question shows in the log.
constexpr std::chrono::milliseconds kBeforeLogRead{1200};
/// No list run lasts longer: what was changed before it is not its victim.
constexpr std::chrono::minutes kLongestRun{15};

const QString kWaits = QStringLiteral("Pi-hole is refreshing its block lists. %1 follows as soon as that is done.");

bool isNowhere(const DigResult &reply)
{
    return reply.answers.contains(QStringLiteral("0.0.0.0")) || reply.answers.contains(QStringLiteral("::"));
}

QString untilWhen(const Permission &permission)
{
    if (!permission.end) return QStringLiteral("always");
    return QStringLiteral("until ") + permission.end->toLocalTime().toString(QStringLiteral("HH:mm"));
}

} // namespace

Flow<> Repair::allow(QString name, bool forGood)
{
    const QString wanted = nameForRule(name);
    if (wanted.isEmpty()) co_return;
    const QDateTime end = QDateTime::currentDateTime().addSecs(Permission::kHour);
    const Permission permission{wanted, forGood ? std::nullopt : std::optional(end)};
    if (!m_activities.mayBegin(Activity::ChangeRules)) {
        postpone(permission, Wish::Allow, QStringLiteral("The permission for "));
        co_return;
    }
    const ActivityMark mark(m_activities, Activity::ChangeRules);
    setUndoName({});
    const auto added = co_await put(permission);
    if (!added) {
        setMessage(QStringLiteral("Could not allow %1: ").arg(wanted) + added.error().description());
        co_return;
    }
    if (!*added) {
        setMessage(QStringLiteral("Pi-hole has a rule of yours for %1 already. See Domains on Pi-hole's web page.")
                       .arg(wanted));
        co_return;
    }
    remember(permission, Wish::Allow);
    co_await prove(permission);
    co_await readRules();
}

/// Whether Pi-hole has the permission now; not when the user has a rule of this name. Pi-hole says that it took a rule
/// also when it has one already, and a permission of Corvane's gets the new end then.
Flow<std::expected<bool, PiholeAPIError>> Repair::put(Permission permission)
{
    const PiholeRule rule = permission.rule();
    const auto added = co_await m_api.addRule(rule);
    if (!added) co_return std::unexpected(added.error());
    if (*added) co_return true;
    const auto there = co_await m_api.rule(rule.kind, rule.domain);
    if (!there) co_return std::unexpected(there.error());
    if (!*there || !Permission::of(**there)) co_return false;
    const auto replaced = co_await m_api.replaceRule(rule);
    if (!replaced) co_return std::unexpected(replaced.error());
    co_return true;
}

Flow<> Repair::prove(Permission permission)
{
    const QString verdict = co_await verdictOnLookup(permission.name);
    setUndoName(permission.name);
    setMessage(verdict.arg(permission.name, untilWhen(permission)));
}

/// What a lookup says about a name that was allowed: %1 stands for the name, %2 for how long.
Flow<QString> Repair::verdictOnLookup(QString name)
{
    const QString letsThrough = QStringLiteral("%1 is allowed (%2) and answers now. Load the page again.");
    const QString noAddress = QStringLiteral("%1 is allowed (%2), but the internet has no address for it.");
    const QString stillBlocked = QStringLiteral("Pi-hole took the permission for %1 (%2), but still blocks it.");
    const QString silent = QStringLiteral("%1 is allowed (%2). Pi-hole did not answer to prove it.");
    DigResult reply;
    for (int lookup = 0; lookup < kLookups; ++lookup) {
        co_await m_clock.pause(kUntilItWorks);
        reply = co_await PiholeController::ask(name);
        if (reply.answered() && !isNowhere(reply)) co_return letsThrough;
        if (reply.status.isEmpty()) co_return silent;
        if (!isNowhere(reply)) break;
    }
    if (isNowhere(reply)) co_return stillBlocked;
    // Pi-hole may be set to answer blocked names in this way.
    co_await m_clock.pause(kBeforeLogRead);
    const auto asked = co_await m_api.newestQuestion(name);
    const bool blocked = asked && !asked->isEmpty() && saysBlocked(asked->first().status);
    co_return blocked ? stillBlocked : noAddress;
}

/// What a list run keeps from being done now is done after it; whatever else is in the way is named.
void Repair::postpone(const Permission &permission, Wish wish, const QString &what)
{
    const QString obstacle = m_activities.obstacle(Activity::ChangeRules);
    if (!listsRun() && obstacle.isEmpty()) return; // another one is being changed
    if (listsRun()) remember(permission, wish);
    setMessage(listsRun() ? kWaits.arg(what + permission.name) : obstacle);
    setUndoName({});
}

Flow<> Repair::takeBack(QString name)
{
    if (!m_activities.mayBegin(Activity::ChangeRules)) {
        postpone({name, std::nullopt}, Wish::TakeBack, QStringLiteral("The end of the permission for "));
        co_return;
    }
    const ActivityMark mark(m_activities, Activity::ChangeRules);
    const auto gone = co_await m_api.removeRule(PiholeRule::Kind::AllowedName, name);
    if (!gone) {
        setMessage(QStringLiteral("Could not take the permission for %1 back: ").arg(name) +
                   gone.error().description());
        co_return;
    }
    remember({name, std::nullopt}, Wish::TakeBack);
    setUndoName({});
    setMessage(
        QStringLiteral("%1 is no longer allowed. A browser may go on with what it knows for some minutes.").arg(name));
    co_await readRules();
}

/// A list run replaces all rules by those of its beginning: does again what it has undone.
Flow<> Repair::repeatChanges()
{
    if (!m_activities.mayBegin(Activity::ChangeRules)) co_return;
    const ActivityMark mark(m_activities, Activity::ChangeRules);
    const Clock::Instant oldest = m_clock.now() - kLongestRun;
    m_changes.removeIf([oldest](const auto &change) { return change.value().moment < oldest; });
    const bool known = co_await readRules();
    if (!known) co_return;
    const QHash<QString, Change> changes = m_changes;
    for (const Change &change : changes) {
        const bool there = std::ranges::count(permissions(), change.permission.name, &Permission::name) > 0;
        if (there == (change.wish == Wish::Allow)) continue;
        if (change.wish == Wish::Allow) {
            const auto put = co_await this->put(change.permission);
            if (put && *put) co_await prove(change.permission);
        } else {
            const auto gone = co_await m_api.removeRule(PiholeRule::Kind::AllowedName, change.permission.name);
            if (gone) setMessage({});
        }
    }
    co_await readRules();
}

} // namespace corvane
