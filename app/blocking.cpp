#include "app/app_model.h"

#include <QDateTime>
#include <QPointer>

#include <algorithm>
#include <cmath>

namespace corvane {

namespace {

/// Pi-hole's timer counts in steps of 0.1 s: only from then on is less than the whole pause left.
constexpr std::chrono::milliseconds kTimerStep{150};
constexpr double kLongestTimer = 100'000; // seconds; until tomorrow morning is less
/// Pi-hole's timer may lag behind the clock by this before it is set anew.
constexpr double kTimerLag = 5; // seconds

} // namespace

QCoro::Task<> AppModel::pauseBlocking(PauseLength::Name name)
{
    return pause(PauseLength::of(name, QDateTime::currentDateTime()), PauseLength::goesByTheClock(name),
                 PauseLength::sentence(name));
}

QCoro::Task<> AppModel::pauseBlocking(std::chrono::seconds length)
{
    return pause(length, false, PauseLength::sentence(length));
}

QCoro::Task<> AppModel::pause(std::chrono::seconds length, bool byTheClock, QString sentence)
{
    const QPointer<AppModel> alive(this);
    configureAPI();
    const auto changed = co_await m_api.setBlocking(false, static_cast<int>(length.count()));
    if (!alive) co_return;
    // Pi-hole may have heard what it did not answer.
    if (changed || changed.error().kind() == PiholeAPIError::Kind::Unreachable) m_pause.begin(length, byTheClock);
    if (changed) co_await m_clock.pause(kTimerStep);
    if (!alive) co_return;
    const auto state = changed ? co_await m_api.blocking() : changed;
    if (!alive) co_return;
    if (!state) {
        tellApi(QStringLiteral("Could not pause blocking: "), state.error());
        co_return;
    }
    setBlocking(*state);
    tellApi(sentence, std::nullopt);
}

QCoro::Task<> AppModel::resumeBlocking()
{
    const QPointer<AppModel> alive(this);
    configureAPI();
    const auto changed = co_await m_api.setBlocking(true, std::nullopt);
    if (!alive) co_return;
    if (changed) m_pause.end();
    const auto state = changed ? co_await m_api.blocking() : changed;
    if (!alive) co_return;
    if (!state) {
        tellApi(QStringLiteral("Could not resume blocking: "), state.error());
        co_return;
    }
    setBlocking(*state);
    tellApi(kResumed, std::nullopt);
}

QCoro::Task<> AppModel::togglePause()
{
    const QPointer<AppModel> alive(this);
    // The button's label takes blocking for on while it is not known; what it does must follow what is so.
    if (!blocking()) {
        co_await refreshStats();
        if (!alive || !blocking()) co_return;
    }
    const bool blocks = blocking() && blocking()->enabled;
    if (blocks)
        co_await pauseBlocking(PauseLength::FiveMinutes);
    else
        co_await resumeBlocking();
}

/// Gives a pause of ours its end back: a Pi-hole that restarts forgets its timer and stays off.
QCoro::Task<> AppModel::keepPauseShort()
{
    const std::optional<std::chrono::seconds> rest = m_pause.rest();
    if (!rest || !blocking()) co_return;
    if (blocking()->enabled) m_pause.end();
    if (blocking()->enabled) co_return;
    // Pi-hole's timer stands still while the Mac sleeps, a time of the day does not.
    const bool late = m_pause.goesByTheClock() && blocking()->timerSeconds &&
                      *blocking()->timerSeconds > static_cast<double>(rest->count()) + kTimerLag;
    if (blocking()->timerSeconds && !late) co_return;

    const QPointer<AppModel> alive(this);
    const bool over = rest->count() == 0;
    const std::optional<int> timer = over ? std::nullopt : std::optional<int>(static_cast<int>(rest->count()));
    const auto changed = co_await m_api.setBlocking(over, timer);
    if (!alive || !changed) co_return;
    setBlocking(*changed);
    if (over) m_pause.end();
}

QCoro::Task<> AppModel::refreshBlocking()
{
    const QPointer<AppModel> alive(this);
    configureAPI();
    const auto state = co_await m_api.blocking();
    if (!alive || !state) co_return;
    setBlocking(*state);
    co_await keepPauseShort();
}

/// What is left of a pause, whoever asked for it; absent when blocking is on, or off without an end.
std::optional<std::chrono::seconds> AppModel::restOfPause(const PiholeBlocking &state) const
{
    if (state.enabled) return std::nullopt;
    if (!state.timerSeconds) return m_pause.rest();
    const double seconds = std::clamp(std::ceil(*state.timerSeconds), 0.0, kLongestTimer);
    return std::chrono::seconds(static_cast<qint64>(seconds));
}

PiholeAPI::Answer<PiholeArchive> AppModel::downloadSettings()
{
    const QPointer<AppModel> alive(this);
    configureAPI();
    const auto state = co_await m_api.blocking();
    if (!alive) co_return std::unexpected(PiholeAPIError::unreachable());
    const std::optional<std::chrono::seconds> rest = state ? restOfPause(*state) : std::nullopt;
    if (rest) {
        const auto lifted = co_await m_api.setBlocking(true, std::nullopt);
        if (!lifted) co_return std::unexpected(lifted.error());
        if (!alive) co_return std::unexpected(PiholeAPIError::unreachable());
    }
    auto archive = co_await m_api.teleporterDownload();
    // Whatever else it sent, it is no backup.
    if (archive && !archive->bytes.startsWith("PK")) archive = std::unexpected(PiholeAPIError::badResponse());
    if (!alive || !rest || rest->count() == 0) co_return archive;
    const auto paused = co_await m_api.setBlocking(false, static_cast<int>(rest->count()));
    if (!alive || !paused) co_return archive;
    m_pause.begin(*rest, m_pause.goesByTheClock());
    setBlocking(*paused);
    co_return archive;
}

} // namespace corvane
