#pragma once

#include "app/activity.h"
#include "app/flow.h"

#include <QObject>
#include <QPointer>
#include <QSet>
#include <QString>

namespace corvane {

class ActivityMark;

/// What is under way, counted, and whether something else may begin beside it.
class CurrentActivities : public QObject {
    Q_OBJECT

public:
    /// What is under way; what still waits for the user's consent is not.
    [[nodiscard]] Activities underWay() const;
    [[nodiscard]] QSet<QString> busyKeys() const;

    [[nodiscard]] bool mayBegin(Activity activity) const;
    /// Why the activity may not begin, for the user; empty when it may, and when it has begun already.
    [[nodiscard]] QString obstacle(Activity activity) const;
    /// Whatever of these is under way keeps what it finds out to itself from now on: it does not hold any more.
    void outdate(Activities activities);
    /// The same for all of them, and nothing may begin any more.
    void close();
    /// How many have begun so far that change something.
    [[nodiscard]] int changesBegun() const { return m_changesBegun; }

Q_SIGNALS:
    void changed();

private:
    friend class ActivityMark;
    friend BoundTo boundTo(const ActivityMark &mark);
    struct Count {
        int marked = 0;
        int underWay = 0;
        int newest = 0;
    };
    [[nodiscard]] Count &count(Activity activity);
    [[nodiscard]] bool isNewest(Activity activity, int run);
    [[nodiscard]] Activities marked() const;

    std::array<Count, kActivityRules.size()> m_counts;
    int m_changesBegun = 0;
    bool m_closed = false;
};

/// Marks an activity as under way for as long as it lives, whichever way its flow ends.
class ActivityMark {
public:
    enum class Begin { AtOnce, WhenAgreed };

    /// `WhenAgreed`: nothing is under way before `agreed`, but nothing that it excludes may begin either.
    ActivityMark(CurrentActivities &activities, Activity activity, Begin begin = Begin::AtOnce);
    ~ActivityMark();
    ActivityMark(const ActivityMark &) = delete;
    ActivityMark &operator=(const ActivityMark &) = delete;

    void agreed();
    /// Whether the model still lives, no newer run has begun, and nothing has outdated this one.
    [[nodiscard]] bool stands() const;

private:
    friend BoundTo boundTo(const ActivityMark &mark);
    QPointer<CurrentActivities> m_activities;
    Activity m_activity;
    bool m_agreed = false;
    int m_run = 0;
};

/// Binds a flow to the mark that it has set: it ends when the mark does not hold any more.
[[nodiscard]] BoundTo boundTo(const ActivityMark &mark);

} // namespace corvane
