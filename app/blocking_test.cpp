#include "app/app_model.h"
#include "app/blocked_name.h"
#include "app/disturbance.h"
#include "app/status_note.h"
#include "runtime/pihole_controller.h"

#include <algorithm>

namespace corvane {

namespace {

/// What is asked for enters Pi-hole's log after at most a second.
constexpr std::chrono::milliseconds kBeforeLogRead{1200};
constexpr int kLogLength = 300;

/// Advertising and tracking names that the image's default list blocks, in the order they are tried.
const QStringList &trackerNames()
{
    static const QStringList names{QStringLiteral("doubleclick.net"), QStringLiteral("googleadservices.com"),
                                   QStringLiteral("ssl.google-analytics.com")};
    return names;
}

std::optional<QString> blockedKind(const DigResult &reply)
{
    if (reply.status == QLatin1String("NXDOMAIN")) return QStringLiteral("NXDOMAIN (the name does not exist)");
    if (reply.answers.contains(QStringLiteral("0.0.0.0"))) return QStringLiteral("answered 0.0.0.0 (nowhere)");
    return std::nullopt;
}

QString allowedAnswer(const DigResult &reply)
{
    if (reply.answered()) return reply.answers.join(QStringLiteral(", "));
    return QStringLiteral("no answer (%1)").arg(reply.status.isEmpty() ? QStringLiteral("timeout") : reply.status);
}

/// What Pi-hole answered.
struct Replies {
    QList<DigResult> trackers; ///< To the names as far as they were asked for: up to the first one that is blocked.
    DigResult allowed;
};

QCoro::Task<Replies> askForNames()
{
    Replies replies;
    for (const QString &name : trackerNames()) {
        const DigResult reply = co_await PiholeController::ask(name);
        replies.trackers.append(reply);
        if (blockedKind(reply)) break;
    }
    replies.allowed = co_await PiholeController::ask(QStringLiteral("example.com"));
    co_return replies;
}

BlockingTestResult resultOf(const Replies &replies)
{
    BlockingTestResult result;
    result.blockedKind = blockedKind(replies.trackers.last());
    if (result.blockedKind) result.blockedDomain = trackerNames().at(replies.trackers.size() - 1);
    result.allowedAnswer = allowedAnswer(replies.allowed);
    return result;
}

QString noteOnState(const PiholeBlocking &state)
{
    if (state.enabled) return {};
    return state.timerSeconds
               ? QStringLiteral("Blocking is paused, so nothing is blocked now. Press Test again after the pause.")
               : QStringLiteral("Blocking is switched off in Pi-hole, so nothing is blocked now. Press 'Resume "
                                "blocking' on the dashboard.");
}

} // namespace

Flow<> AppModel::runBlockingTest()
{
    const QString key = QStringLiteral("blocking");
    if (!m_activities.mayBegin(Activity::BlockingTest)) co_return;
    const ActivityMark mark(m_activities, Activity::BlockingTest);
    co_await boundTo(mark);
    configureAPI();

    const Disturbance disturbance(m_activities);
    const Replies replies = co_await askForNames();
    for (const DigResult &reply : replies.trackers) {
        if (reply.ok) m_day.countOwn(blockedKind(reply).has_value());
    }
    if (replies.allowed.ok) m_day.countOwn();
    BlockingTestResult result = resultOf(replies);

    const auto counters = co_await m_api.summary();
    if (counters) {
        result.queries = counters->total;
        result.blockedToday = counters->blocked;
    } else {
        result.note = QStringLiteral("Could not read the statistics: ") + counters.error().description();
    }
    if (!result.blockedDomain) {
        result.note =
            QStringLiteral("None of the test domains was blocked. The block lists are downloaded on the first "
                           "start, which takes about a minute. Press Test again soon.");
    }
    const bool bothHold = result.blockedDomain && replies.allowed.answered();
    const std::optional<PiholeSummary> known = counters ? std::optional(*counters) : std::nullopt;
    if (known) setSummary(known);
    QString beside;
    if (!bothHold) beside = co_await whyBlockingFailed(result, replies.allowed, known);
    const bool holds = bothHold || !disturbance.happened();
    if (!holds) {
        result.note.reset();
        beside = Disturbance::kSentence;
    }
    setBlockingTest(result);
    setNote(key, beside);
    if (!holds) co_return;
    recordOutcome(key, bothHold,
                  bothHold ? QStringLiteral("A tracker domain was blocked and a normal one allowed")
                           : QStringLiteral("Blocking test did not pass"));
}

/// What a blocking test that did not pass really says about Pi-hole; empty when it is not known better.
Flow<QString> AppModel::whyBlockingFailed(BlockingTestResult result, DigResult allowed,
                                          std::optional<PiholeSummary> counters)
{
    const DnsTrouble trouble = co_await dnsTroubleProven(allowed);
    if (trouble != DnsTrouble::None && trouble != DnsTrouble::Silent) co_return sentence(trouble);
    if (result.blockedDomain || !counters) co_return {};
    if (hasNoLists(counters)) co_return QStringLiteral("Pi-hole has no block lists, so it blocks nothing.");
    const auto state = co_await m_api.blocking();
    if (!state) co_return {};
    if (!state->enabled) co_return noteOnState(*state);
    const QString inAnotherWay = co_await blockedInAnotherWay();
    co_return inAnotherWay;
}

/// Whether Pi-hole's own log says that it blocked one of the names, whatever it answered.
Flow<QString> AppModel::blockedInAnotherWay()
{
    co_await m_clock.pause(kBeforeLogRead);
    const auto queries = co_await m_api.recentQueries(kLogLength);
    if (!queries) co_return {};
    const auto blocked = std::ranges::find_if(*queries, [](const PiholeQuery &query) {
        return trackerNames().contains(query.domain) && saysBlocked(query.status);
    });
    if (blocked == queries->end()) co_return {};
    co_return QStringLiteral("Pi-hole did block %1. It answers blocked names in another way than usual (its blocking "
                             "mode), which this test does not count.")
        .arg(blocked->domain);
}

/// Says beside a test that looked for names in Pi-hole's log when Pi-hole shows no names at all.
Flow<> AppModel::explainMissingNames(const ActivityMark *run, QString key, bool missing)
{
    co_await boundTo(*run);
    setNote(key, {});
    if (!missing) co_return;
    const auto queries = co_await m_api.recentQueries(kLogLength);
    if (!queries) co_return;
    bool hidden = std::ranges::count(*queries, QStringLiteral("hidden"), &PiholeQuery::domain) > 0;
    if (queries->isEmpty()) {
        // Pi-hole counts what it does not log.
        const auto counters = co_await m_api.summary();
        hidden = counters && counters->total > 0;
    }
    if (hidden) {
        setNote(key, QStringLiteral("Pi-hole hides the names in its log (its privacy level), so this test cannot see "
                                    "them, whoever asked."));
    }
}

} // namespace corvane
