#include "app/app_model.h"

#include <QPointer>

#include <algorithm>
#include <cmath>

namespace corvane {

namespace {

/// Pi-hole's timer counts in steps of 0.1 s: only from then on is less than the whole pause left.
constexpr std::chrono::milliseconds kTimerStep{150};
constexpr double kLongestTimer = 86'400; // seconds
const QString kListsKey = QStringLiteral("lists");
constexpr int kListRuns = 2;
/// From the end of a run until its names count.
constexpr std::chrono::seconds kListsSettle{1};

QString inWords(std::chrono::seconds length)
{
    const auto words = [](qint64 count, const char *unit) {
        return QStringLiteral("%1 %2%3").arg(count).arg(QLatin1String(unit),
                                                        count == 1 ? QString() : QStringLiteral("s"));
    };
    const qint64 seconds = length.count();
    if (seconds % 3600 == 0) return words(seconds / 3600, "hour");
    return seconds % 60 == 0 ? words(seconds / 60, "minute") : words(seconds, "second");
}

QString listsVerdict(bool loaded, bool empty)
{
    if (!loaded)
        return QStringLiteral("The block lists could not be loaded. Check this Mac's connection (and any VPN), then "
                              "try again.");
    return empty ? QStringLiteral("Pi-hole could not fetch any of its block lists. Check this Mac's connection (and "
                                  "any VPN), then try again.")
                 : QStringLiteral("The block lists are loaded.");
}

} // namespace

QCoro::Task<> AppModel::pauseBlocking(std::chrono::seconds length)
{
    const QPointer<AppModel> alive(this);
    configureAPI();
    const auto changed = co_await m_api.setBlocking(false, static_cast<int>(length.count()));
    if (!alive) co_return;
    // Pi-hole may have heard what it did not answer.
    if (changed || changed.error().kind() == PiholeAPIError::Kind::Unreachable) m_pause.begin(length);
    if (changed) co_await m_clock.pause(kTimerStep);
    if (!alive) co_return;
    const auto state = changed ? co_await m_api.blocking() : changed;
    if (!alive) co_return;
    if (!state) {
        tellApi(QStringLiteral("Could not pause blocking: "), state.error());
        co_return;
    }
    setBlocking(*state);
    tellApi(kPaused + inWords(length) + u'.', std::nullopt);
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
        co_await pauseBlocking();
    else
        co_await resumeBlocking();
}

/// Gives a pause of ours its end back: a Pi-hole that restarts forgets its timer and stays off.
QCoro::Task<> AppModel::keepPauseShort()
{
    const std::optional<std::chrono::seconds> rest = m_pause.rest();
    if (!rest || !blocking()) co_return;
    if (blocking()->enabled) m_pause.end();
    if (blocking()->enabled || blocking()->timerSeconds) co_return;

    const QPointer<AppModel> alive(this);
    const bool over = rest->count() == 0;
    const std::optional<int> timer = over ? std::nullopt : std::optional<int>(static_cast<int>(rest->count()));
    const auto changed = co_await m_api.setBlocking(over, timer);
    if (!alive || !changed) co_return;
    setBlocking(*changed);
    if (over) m_pause.end();
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
    m_pause.begin(*rest);
    setBlocking(*paused);
    co_return archive;
}

QCoro::Task<> AppModel::loadBlockLists()
{
    if (!mayBegin(Activity::LoadLists, &AppModel::setApiMessage)) co_return;
    const ActivityMark mark(m_activities, Activity::LoadLists);
    configureAPI();
    setNote(kListsKey, QStringLiteral("Pi-hole loads its block lists. This takes a few seconds to some minutes..."));
    // A Pi-hole that never had lists uses them from the second run on.
    bool loaded = true;
    for (int run = 0; loaded && (run == 0 || (listsEmpty() && run < kListRuns)); ++run) {
        const auto ended = co_await m_api.updateLists();
        if (!mark.stands()) co_return;
        loaded = ended.value_or(false);
        if (loaded) co_await m_clock.pause(kListsSettle);
        if (!mark.stands()) co_return;
        co_await refreshStats();
        if (!mark.stands()) co_return;
    }
    setNote(kListsKey, listsVerdict(loaded, listsEmpty()));
}

} // namespace corvane
