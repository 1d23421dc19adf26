#include "app/pause.h"

#include <QDateTime>

#include <algorithm>

namespace corvane {

namespace {

const QString kEnd = QStringLiteral("pauseEnd");       // seconds since 1970; 0 for no pause
const QString kLength = QStringLiteral("pauseLength"); // seconds
const QString kByTheClock = QStringLiteral("pauseByTheClock");
constexpr qint64 kLongest = 100'000; // seconds; more is a damaged store

} // namespace

void Pause::begin(std::chrono::seconds length, PauseEnd endedBy)
{
    m_settings.setValue(kByTheClock, endedBy == PauseEnd::TheClock);
    m_settings.setValue(kLength, static_cast<qlonglong>(length.count()));
    m_settings.setValue(kEnd, QDateTime::currentSecsSinceEpoch() + static_cast<qlonglong>(length.count()));
}

void Pause::end()
{
    if (m_settings.value(kEnd).toLongLong() != 0) m_settings.setValue(kEnd, 0);
}

PauseEnd Pause::endedBy() const
{
    return m_settings.value(kByTheClock).toBool() ? PauseEnd::TheClock : PauseEnd::ItsLength;
}

std::optional<std::chrono::seconds> Pause::rest() const
{
    const qint64 end = m_settings.value(kEnd).toLongLong();
    if (end <= 0) return std::nullopt;
    const qint64 longest = std::clamp<qint64>(m_settings.value(kLength).toLongLong(), 0, kLongest);
    return std::chrono::seconds(std::clamp<qint64>(end - QDateTime::currentSecsSinceEpoch(), 0, longest));
}

} // namespace corvane
