#include "api/pihole_api.h"

#include "api/multipart.h"
#include "api/pihole_answers.h"
#include "api/pihole_lists.h"
#include "api/pihole_rules.h"
#include "api/pihole_session.h"

#include <QUrl>

namespace corvane {

namespace {

template <class T>
using Decoder = std::expected<T, PiholeAPIError> (*)(const QByteArray &);

template <class T>
PiholeAPI::Answer<T> ask(PiholeSession::Shared session, PiholeRequest request, Decoder<T> decode)
{
    const PiholeSession::Reply answer = co_await PiholeSession::send(session, request);
    if (!answer) co_return std::unexpected(answer.error());
    co_return decode(answer->body);
}

QCoro::Task<bool> pageAnswers(PiholeSession::Shared session)
{
    const HttpOutcome outcome = co_await PiholeSession::visit(session, "/admin");
    const bool answered = outcome && outcome->status >= 200 && outcome->status <= 399;
    co_return answered;
}

/// Sends what only has to be done.
PiholeAPI::Answer<void> tell(PiholeSession::Shared session, PiholeRequest request)
{
    const PiholeSession::Reply answer = co_await PiholeSession::send(session, request);
    const bool gone = answer || (request.verb == "DELETE" && answer.error() == PiholeAPIError::http(404));
    if (!gone) co_return std::unexpected(answer.error());
    co_return {};
}

std::expected<PiholeArchive, PiholeAPIError> archiveOf(const QByteArray &body) { return PiholeArchive{body}; }

QCoro::Task<std::expected<bool, PiholeAPIError>> runLists(PiholeSession::Shared session, PiholeRequest request)
{
    const PiholeSession::Reply answer = co_await PiholeSession::sendLong(session, request);
    if (!answer) co_return std::unexpected(answer.error());
    co_return listsWereLoaded(answer->body);
}

} // namespace

PiholeAPI::PiholeAPI(QObject *parent)
    : PiholeAPI(ExchangeLimits{}, parent)
{}

PiholeAPI::PiholeAPI(const ExchangeLimits &limits, QObject *parent)
    : QObject(parent)
    , m_session(std::make_shared<PiholeSession>(limits))
{}

PiholeAPI::~PiholeAPI() { m_session->close(); }

void PiholeAPI::configure(int port, const std::optional<QString> &password) { m_session->configure({port, password}); }

QCoro::Task<bool> PiholeAPI::webAnswers() { return pageAnswers(m_session); }

PiholeAPI::Answer<PiholeSummary> PiholeAPI::summary()
{
    const PiholeRequest request{.target = "/api/stats/summary", .largestAnswer = m_session->limits().jsonBytes};
    return ask(m_session, request, &parseSummary);
}

PiholeAPI::Answer<PiholeBlocking> PiholeAPI::blocking()
{
    const PiholeRequest request{.target = "/api/dns/blocking", .largestAnswer = m_session->limits().jsonBytes};
    return ask(m_session, request, &parseBlocking);
}

PiholeAPI::Answer<PiholeBlocking> PiholeAPI::setBlocking(bool enabled, std::optional<int> timerSeconds)
{
    const PiholeRequest request{.verb = "POST",
                                .target = "/api/dns/blocking",
                                .contentType = "application/json",
                                .body = blockingBody(enabled, timerSeconds),
                                .largestAnswer = m_session->limits().jsonBytes};
    return ask(m_session, request, &parseBlocking);
}

PiholeAPI::Answer<QList<PiholeQuery>> PiholeAPI::recentQueries(int length)
{
    const PiholeRequest request{.target = "/api/queries?length=" + QByteArray::number(length),
                                .largestAnswer = m_session->limits().jsonBytes};
    return ask(m_session, request, &parseQueries);
}

PiholeAPI::Answer<QList<PiholeQuery>> PiholeAPI::blockedSince(double second, int length)
{
    const PiholeRequest request{.target = "/api/queries?from=" + QByteArray::number(second, 'f', 6) +
                                          "&upstream=blocklist&length=" + QByteArray::number(length),
                                .largestAnswer = m_session->limits().jsonBytes};
    return ask(m_session, request, &parseQueries);
}

PiholeAPI::Answer<QList<PiholeQuery>> PiholeAPI::newestQuestion(QString name)
{
    const PiholeRequest request{.target = "/api/queries?length=1&domain=" + QUrl::toPercentEncoding(name),
                                .largestAnswer = m_session->limits().jsonBytes};
    return ask(m_session, request, &parseQueries);
}

PiholeAPI::Answer<int> PiholeAPI::privacyLevel()
{
    const PiholeRequest request{.target = "/api/info/ftl", .largestAnswer = m_session->limits().jsonBytes};
    return ask(m_session, request, &parsePrivacyLevel);
}

PiholeAPI::Answer<PiholeHistory> PiholeAPI::history()
{
    const PiholeRequest request{.target = "/api/history", .largestAnswer = m_session->limits().jsonBytes};
    return ask(m_session, request, &parseHistory);
}

PiholeAPI::Answer<PiholeTopBlocked> PiholeAPI::topBlocked(int count)
{
    const PiholeRequest request{.target = "/api/stats/top_domains?blocked=true&count=" + QByteArray::number(count),
                                .largestAnswer = m_session->limits().jsonBytes};
    return ask(m_session, request, &parseTopBlocked);
}

PiholeAPI::Answer<PiholeArchive> PiholeAPI::teleporterDownload()
{
    const PiholeRequest request{.target = "/api/teleporter", .largestAnswer = m_session->limits().archiveBytes};
    return ask(m_session, request, &archiveOf);
}

PiholeAPI::Answer<bool> PiholeAPI::teleporterUpload(QByteArray archive, QString filename)
{
    const QByteArray boundary = newMultipartBoundary();
    const PiholeRequest request{.verb = "POST",
                                .target = "/api/teleporter",
                                .contentType = "multipart/form-data; boundary=" + boundary,
                                .body = multipartBody(boundary, filename, archive),
                                .largestAnswer = m_session->limits().jsonBytes};
    return ask(m_session, request, &parseRestored);
}

PiholeAPI::Answer<QList<PiholeList>> PiholeAPI::lists()
{
    const PiholeRequest request{.target = "/api/lists", .largestAnswer = m_session->limits().jsonBytes};
    return ask(m_session, request, &parseLists);
}

PiholeAPI::Answer<bool> PiholeAPI::updateLists(std::function<void(const QByteArray &)> heard)
{
    const PiholeRequest request{.verb = "POST",
                                .target = "/api/action/gravity",
                                .largestAnswer = m_session->limits().jsonBytes,
                                .heard = heard};
    return runLists(m_session, request);
}

PiholeAPI::Answer<QList<PiholeRule>> PiholeAPI::rules()
{
    const PiholeRequest request{.target = kAllRules, .largestAnswer = m_session->limits().jsonBytes};
    return ask(m_session, request, &parseRules);
}

PiholeAPI::Answer<std::optional<PiholeRule>> PiholeAPI::rule(PiholeRule::Kind kind, QString domain)
{
    const PiholeRequest request{.target = rulePath(kind, domain), .largestAnswer = m_session->limits().jsonBytes};
    return ask(m_session, request, &parseRule);
}

PiholeAPI::Answer<bool> PiholeAPI::addRule(PiholeRule rule)
{
    const PiholeRequest request{.verb = "POST",
                                .target = rulesPath(rule.kind),
                                .contentType = "application/json",
                                .body = ruleBody(rule),
                                .largestAnswer = m_session->limits().jsonBytes};
    return ask(m_session, request, &parseRuleAdded);
}

PiholeAPI::Answer<void> PiholeAPI::replaceRule(PiholeRule rule)
{
    const PiholeRequest request{.verb = "PUT",
                                .target = rulePath(rule.kind, rule.domain),
                                .contentType = "application/json",
                                .body = ruleBody(rule),
                                .largestAnswer = m_session->limits().jsonBytes};
    return tell(m_session, request);
}

PiholeAPI::Answer<void> PiholeAPI::removeRule(PiholeRule::Kind kind, QString domain)
{
    const PiholeRequest request{
        .verb = "DELETE", .target = rulePath(kind, domain), .largestAnswer = m_session->limits().jsonBytes};
    return tell(m_session, request);
}

} // namespace corvane
