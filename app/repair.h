#pragma once

#include "api/pihole_api.h"
#include "app/blocked_name.h"
#include "app/clock.h"
#include "app/current_activities.h"
#include "app/flow.h"
#include "app/permission.h"
#include "app/published.h"

#include <QHash>
#include <QObject>

namespace corvane {

/// What helps with a site that does not load: the names that Pi-hole has blocked lately, and permissions for them.
/// Names live in its memory and among Pi-hole's rules, and nowhere else.
class Repair : public QObject {
    Q_OBJECT

    /// The user looks: the names are read again every few seconds.
    CORVANE_PUBLISHED(Repair, bool, watching, setWatching, false)
    CORVANE_PUBLISHED(Repair, QList<BlockedName>, names, setNames, QList<BlockedName>())
    CORVANE_PUBLISHED(Repair, QList<Permission>, permissions, setPermissions, QList<Permission>())
    /// How Pi-hole hides names; 0 when it does not.
    CORVANE_PUBLISHED(Repair, int, privacyLevel, setPrivacyLevel, 0)
    /// Why nothing can be seen; empty while all is well.
    CORVANE_PUBLISHED(Repair, QString, trouble, setTrouble, QString())
    /// What came of the last permission, and the name that it was about while that can be undone.
    CORVANE_PUBLISHED(Repair, QString, message, setMessage, QString())
    CORVANE_PUBLISHED(Repair, QString, undoName, setUndoName, QString())
    /// Pi-hole says that it has lists, and cannot read them.
    CORVANE_PUBLISHED(Repair, bool, databaseBroken, setDatabaseBroken, false)

public:
    Repair(PiholeAPI &api, Clock &clock, CurrentActivities &activities);

    /// Looks until `stopWatching`. What is asked for from now on is kept apart from what was asked before.
    [[nodiscard]] Flow<> watch();
    void stopWatching() { setWatching(false); }

    /// Lets Pi-hole allow the name, for an hour or until it is taken back, and proves it by a lookup.
    [[nodiscard]] Flow<> allow(QString name, bool forGood);
    [[nodiscard]] Flow<> takeBack(QString name);

    /// Reads the rules again; whether they could be read.
    Flow<bool> readRules();
    /// Takes away what is over. Asks Pi-hole only when something is, or when nobody knows.
    [[nodiscard]] Flow<> endPermissions();
    /// Something else may have changed Pi-hole's rules: they are read again, and what got lost is done again.
    void onRulesReplaced();
    void forgetRules() { m_rulesKnown = false; }

private:
    /// What the user asked for lately, to be done again if a list run undoes it.
    enum class Wish { Allow, TakeBack };
    struct Change {
        Permission permission;
        Wish wish = Wish::Allow;
        Clock::Instant moment;
    };

    [[nodiscard]] Flow<> look();
    [[nodiscard]] Flow<> setBoundary();
    [[nodiscard]] Flow<> repeatChanges();
    [[nodiscard]] Flow<std::expected<bool, PiholeAPIError>> put(Permission permission);
    [[nodiscard]] Flow<> prove(Permission permission);
    [[nodiscard]] Flow<QString> verdictOnLookup(QString name);
    void postpone(const Permission &permission, Wish wish, const QString &what);
    void remember(const Permission &permission, Wish wish);
    [[nodiscard]] bool listsRun() const { return m_activities.underWay().contains(Activity::LoadLists); }
    void onActivities();

    PiholeAPI &m_api;
    Clock &m_clock;
    CurrentActivities &m_activities;
    QList<PiholeList> m_lists;
    QList<PiholeRule> m_rules;
    std::optional<double> m_boundary;
    QHash<QString, Change> m_changes;
    bool m_rulesKnown = false;
    bool m_listsRan = false;
    int m_newestWatch = 0;
};

} // namespace corvane
