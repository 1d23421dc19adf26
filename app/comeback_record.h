#pragma once

#include <QDateTime>
#include <QList>
#include <QString>

namespace corvane {

/// Why Pi-hole did not run. The numbers are kept in the settings.
enum class Outage {
    Opened = 0,    ///< It did not when Corvane was opened.
    Woke = 1,      ///< It did not when the Mac woke.
    Colima = 2,    ///< Colima had stopped.
    Container = 3, ///< The container had ended.
};

/// What came of starting it again. The numbers are kept in the settings.
enum class ComebackEnd { Back = 0, Failed = 1, Cancelled = 2 };

/// One time that Pi-hole was, or should have been, started again.
struct ComebackEntry {
    qint64 at = 0; ///< Seconds since 1970.
    Outage outage = Outage::Opened;
    ComebackEnd end = ComebackEnd::Back;
    qint64 seconds = 0; ///< How long this Mac asked in vain.

    bool operator==(const ComebackEntry &) const = default;
};

/// The newest times that Pi-hole was started again, newest first; kept as one line of text.
class ComebackRecord {
public:
    static constexpr qsizetype kMost = 20;

    /// What is no entry is left out.
    [[nodiscard]] static ComebackRecord fromText(const QString &text);
    [[nodiscard]] QString toText() const;

    void add(const ComebackEntry &entry);
    [[nodiscard]] const QList<ComebackEntry> &entries() const { return m_entries; }

private:
    QList<ComebackEntry> m_entries;
};

/// The entry in one sentence, which begins with its time.
[[nodiscard]] QString comebackSentence(const ComebackEntry &entry, const QDateTime &now);

} // namespace corvane
