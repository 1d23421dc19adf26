#include "app/app_model.h"

#include <QDateTime>

#include <algorithm>
#include <cmath>

namespace corvane {

namespace {

/// Pi-hole's timer counts in steps of 0.1 s: only from then on is less than the whole pause left.
constexpr std::chrono::milliseconds kTimerStep{150};
constexpr std::chrono::duration<double> kLongestTimer{100'000}; // until tomorrow morning is less
/// Pi-hole's timer may lag behind the clock by this before it is set again.
constexpr std::chrono::seconds kTimerLag{5};

} // namespace

Flow<> AppModel::pauseBlocking(PauseLength::Name name)
{
    return pause(PauseLength::of(name, QDateTime::currentDateTime()), PauseLength::endedBy(name),
                 PauseLength::sentence(name));
}

Flow<> AppModel::pauseBlocking(std::chrono::seconds length)
{
    return pause(length, PauseEnd::ItsLength, PauseLength::sentence(length));
}

Flow<> AppModel::pause(std::chrono::seconds length, PauseEnd endedBy, QString sentence)
{
    m_pause.userDecides();
    configureAPI();
    const auto changed = co_await m_api.setBlocking(false, static_cast<int>(length.count()));
    // Pi-hole may have heard what it did not answer.
    if (changed || changed.error().kind() == PiholeAPIError::Kind::Unreachable) m_pause.begin(length, endedBy);
    if (changed) co_await m_clock.pause(kTimerStep);
    const auto state = changed ? co_await m_api.blocking() : changed;
    if (!state) {
        tellApi(QStringLiteral("Could not pause blocking: "), state.error());
        co_return;
    }
    setBlocking(*state);
    tellApi(sentence, std::nullopt);
}

Flow<> AppModel::resumeBlocking()
{
    m_pause.userDecides();
    configureAPI();
    const auto changed = co_await m_api.setBlocking(true, std::nullopt);
    if (changed) m_pause.end();
    const auto state = changed ? co_await m_api.blocking() : changed;
    if (!state) {
        tellApi(QStringLiteral("Could not resume blocking: "), state.error());
        co_return;
    }
    setBlocking(*state);
    tellApi(kResumed, std::nullopt);
}

Flow<> AppModel::togglePause()
{
    // Until the state is known the button says Pause. Read it first: a press must never do the opposite of that.
    if (!blocking()) {
        co_await refreshStats();
        if (!blocking()) co_return;
    }
    const bool blocks = blocking() && blocking()->enabled;
    if (blocks)
        co_await pauseBlocking(PauseLength::FiveMinutes);
    else
        co_await resumeBlocking();
}

/// Gives a pause of ours its end back: a Pi-hole that restarts forgets its timer and stays off.
Flow<> AppModel::keepPauseShort()
{
    const std::optional<std::chrono::seconds> rest = m_pause.rest();
    if (!rest || !blocking()) co_return;
    if (blocking()->enabled) m_pause.end();
    if (blocking()->enabled) co_return;
    // Pi-hole's timer stops while the Mac sleeps, a time of the day does not.
    const bool late = m_pause.endedBy() == PauseEnd::TheClock && blocking()->timerSeconds &&
                      *blocking()->timerSeconds > static_cast<double>((*rest + kTimerLag).count());
    if (blocking()->timerSeconds && !late) co_return;

    const bool over = rest->count() == 0;
    const std::optional<int> timer = over ? std::nullopt : std::optional<int>(static_cast<int>(rest->count()));
    const auto changed = co_await m_api.setBlocking(over, timer);
    if (!changed) co_return;
    setBlocking(*changed);
    if (over) m_pause.end();
}

Flow<> AppModel::refreshBlocking()
{
    configureAPI();
    const auto state = co_await m_api.blocking();
    if (!state) co_return;
    setBlocking(*state);
    co_await keepPauseShort();
}

/// What is left of a pause, whether Corvane asked for it or not; absent when blocking is on, or off without an end.
std::optional<std::chrono::seconds> AppModel::restOfPause(const PiholeBlocking &state) const
{
    if (state.enabled) return std::nullopt;
    if (!state.timerSeconds) return m_pause.rest();
    const double seconds = std::clamp(std::ceil(*state.timerSeconds), 0.0, kLongestTimer.count());
    return std::chrono::seconds(static_cast<qint64>(seconds));
}

Flow<std::expected<PiholeArchive, PiholeAPIError>> AppModel::downloadSettings()
{
    configureAPI();
    const int decisions = m_pause.decisions();
    const auto state = co_await m_api.blocking();
    const std::optional<std::chrono::seconds> rest = state ? restOfPause(*state) : std::nullopt;
    if (rest) {
        const auto lifted = co_await m_api.setBlocking(true, std::nullopt);
        if (!lifted) co_return std::unexpected(lifted.error());
    }
    auto archive = co_await m_api.teleporterDownload();
    // Whatever else it sent, it is no backup.
    if (archive && !archive->bytes.startsWith("PK")) archive = std::unexpected(PiholeAPIError::badResponse());
    if (!rest || rest->count() == 0 || decisions != m_pause.decisions()) co_return archive;
    const auto paused = co_await m_api.setBlocking(false, static_cast<int>(rest->count()));
    if (!paused) co_return archive;
    m_pause.begin(*rest, m_pause.endedBy());
    setBlocking(*paused);
    co_return archive;
}

} // namespace corvane
