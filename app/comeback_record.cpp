#include "app/comeback_record.h"

#include <QLocale>

#include <algorithm>
#include <optional>

namespace corvane {

namespace {

constexpr qint64 kMinute = 60;
constexpr qint64 kHour = 60 * kMinute;
constexpr qint64 kLatest = qint64{1} << 40; // seconds since 1970
constexpr QChar kBetween(u',');

std::optional<ComebackEntry> entryIn(const QString &text)
{
    const QStringList words = text.split(u' ');
    if (words.size() != 4) return std::nullopt;
    QList<qint64> numbers;
    for (const QString &word : words) {
        bool good = false;
        numbers << word.toLongLong(&good);
        if (!good || numbers.last() < 0 || numbers.last() > kLatest) return std::nullopt;
    }
    const bool known = numbers[1] <= qint64(Outage::Container) && numbers[2] <= qint64(ComebackEnd::Cancelled);
    if (!known) return std::nullopt;
    return ComebackEntry{numbers[0], static_cast<Outage>(numbers[1]), static_cast<ComebackEnd>(numbers[2]), numbers[3]};
}

QString causeText(Outage outage)
{
    switch (outage) {
    case Outage::Opened:
        return QStringLiteral("after Corvane was opened");
    case Outage::Woke:
        return QStringLiteral("after waking");
    case Outage::Colima:
        return QStringLiteral("after Colima had stopped");
    case Outage::Container:
        break;
    }
    return QStringLiteral("after its container had ended");
}

QString lengthText(qint64 seconds)
{
    if (seconds < 2 * kMinute) return QStringLiteral("%1 s").arg(seconds);
    if (seconds < 2 * kHour) return QStringLiteral("%1 min").arg(seconds / kMinute);
    return QStringLiteral("%1 h").arg(seconds / kHour);
}

QString timeText(const QDateTime &time, const QDateTime &now)
{
    const bool today = time.date() == now.date();
    return QLocale(QLocale::English).toString(time, today ? QStringLiteral("HH:mm") : QStringLiteral("d MMM HH:mm"));
}

QString endText(const ComebackEntry &entry)
{
    switch (entry.end) {
    case ComebackEnd::Failed:
        return QStringLiteral("Not started again %1: three tries failed.").arg(causeText(entry.outage));
    case ComebackEnd::Cancelled:
        return QStringLiteral("Not started again %1: you cancelled it.").arg(causeText(entry.outage));
    case ComebackEnd::Back:
        break;
    }
    // Nobody knows how long it had not run before Corvane was there to see.
    const QString length = entry.outage == Outage::Opened ? QStringLiteral("at least ") + lengthText(entry.seconds)
                                                          : lengthText(entry.seconds);
    return QStringLiteral("Started again %1, %2 without Pi-hole.").arg(causeText(entry.outage), length);
}

} // namespace

ComebackRecord ComebackRecord::fromText(const QString &text)
{
    ComebackRecord record;
    const QStringList parts = text.split(kBetween).first(std::min(text.count(kBetween) + 1, kMost));
    for (const QString &part : parts) {
        if (const auto entry = entryIn(part)) record.m_entries << *entry;
    }
    return record;
}

QString ComebackRecord::toText() const
{
    QStringList parts;
    for (const ComebackEntry &entry : m_entries)
        parts << QStringLiteral("%1 %2 %3 %4")
                     .arg(entry.at)
                     .arg(static_cast<int>(entry.outage))
                     .arg(static_cast<int>(entry.end))
                     .arg(entry.seconds);
    return parts.join(kBetween);
}

void ComebackRecord::add(const ComebackEntry &entry)
{
    m_entries.prepend(entry);
    m_entries.resize(std::min(m_entries.size(), kMost));
}

QString comebackSentence(const ComebackEntry &entry, const QDateTime &now)
{
    return timeText(QDateTime::fromSecsSinceEpoch(entry.at), now) + u' ' + endText(entry);
}

} // namespace corvane
