#pragma once

#include "app/protection.h"

#include <QByteArray>
#include <QList>
#include <QMap>

#include <expected>
#include <optional>

namespace corvane {

/// A time in which nothing changed, in seconds since 1970.
struct DaySpan {
    qint64 start = 0;
    qint64 end = 0;
    Protection state = Protection::Unknown;

    bool operator==(const DaySpan &) const = default;
};

/// How many questions were Corvane's own.
struct OwnQuestions {
    qint64 asked = 0;
    qint64 blocked = 0;

    bool operator==(const OwnQuestions &) const = default;
};

/// What Corvane saw of the last days: how this Mac was protected, and how much it asked itself. Holds no names.
class DayRecord {
public:
    static constexpr qint64 kKept = qint64{8} * 86'400; // seconds
    static constexpr qint64 kSlot = 600;                // seconds
    /// Corvane looks more often than this while the Mac is awake, in seconds.
    static constexpr qint64 kLongestSilence = 120;
    static constexpr int kMostSpans = 4000;

    /// So it is now. What lies between two notes was as the first one said, unless they are so far apart that the Mac
    /// must have slept.
    void note(qint64 now, Protection state);
    /// One question of Corvane's own that Pi-hole answered.
    void countOwn(qint64 now, bool blocked);
    /// The record with what was noted since a later start of Corvane.
    [[nodiscard]] DayRecord continuedBy(const DayRecord &later) const;

    /// Oldest first; what lies between two of them is not known.
    [[nodiscard]] const QList<DaySpan> &spans() const { return m_spans; }
    /// What Corvane asked in the slot that begins then.
    [[nodiscard]] OwnQuestions ownIn(qint64 slot) const { return m_own.value(slot); }

    [[nodiscard]] QByteArray toBytes() const;
    /// Absent when the bytes are not such a record, or not a whole one.
    [[nodiscard]] static std::optional<DayRecord> fromBytes(const QByteArray &bytes);

private:
    void cutAt(qint64 now);
    void forgetBefore(qint64 time);

    QList<DaySpan> m_spans;
    QMap<qint64, OwnQuestions> m_own;
    /// What has been noted so far comes from an earlier run of Corvane.
    bool m_interrupted = false;
};

} // namespace corvane
