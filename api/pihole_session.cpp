#include "api/pihole_session.h"

#include "api/pihole_answers.h"

#include <QCoro/QCoroFuture>
#include <QNetworkProxy>

namespace corvane {

namespace {

constexpr int kUnauthorized = 401;

QUrl address(int port, const QString &path, const QUrlQuery &query)
{
    QUrl url;
    url.setScheme(QStringLiteral("http"));
    url.setHost(QStringLiteral("127.0.0.1"));
    url.setPort(port);
    url.setPath(path);
    if (!query.isEmpty()) url.setQuery(query);
    return url;
}

QFuture<HttpOutcome> unreachableOutcome()
{
    const HttpOutcome outcome = std::unexpected(HttpFailure::Unreachable);
    return QtFuture::makeReadyFuture(outcome);
}

bool refused(const HttpOutcome &outcome) { return outcome && outcome->status == kUnauthorized; }

PiholeSession::Reply replyOf(const HttpOutcome &outcome)
{
    if (!outcome)
        return std::unexpected(outcome.error() == HttpFailure::TooLarge ? PiholeAPIError::badResponse()
                                                                        : PiholeAPIError::unreachable());
    if (refused(outcome)) return std::unexpected(PiholeAPIError::unauthorized());
    if (outcome->status < 200 || outcome->status > 299) return std::unexpected(PiholeAPIError::http(outcome->status));
    return *outcome;
}

} // namespace

PiholeSession::PiholeSession(const ExchangeLimits &limits)
    : m_limits(limits)
    , m_network(std::make_unique<QNetworkAccessManager>())
{
    m_network->setProxy(QNetworkProxy::NoProxy);
}

void PiholeSession::configure(const PiholeAccess &access)
{
    if (access == m_access) return;
    m_access = access;
    m_sid.clear();
}

void PiholeSession::close()
{
    m_calls.close();
    m_network.reset();
}

QCoro::Task<PiholeSession::Reply> PiholeSession::send(Shared self, PiholeRequest request)
{
    const bool admitted = co_await self->m_calls.enter();
    if (!admitted) co_return std::unexpected(PiholeAPIError::unreachable());
    const Turn turn(self->m_calls);
    const Reply answer = co_await sendAs(self, self->m_access, request);
    co_return answer;
}

QCoro::Task<HttpOutcome> PiholeSession::visit(Shared self, QString path)
{
    const bool admitted = co_await self->m_calls.enter();
    if (!admitted) co_return std::unexpected(HttpFailure::Unreachable);
    const Turn turn(self->m_calls);
    const HttpRequest request{.verb = "GET",
                              .url = address(self->m_access.port, path, {}),
                              .headers = {},
                              .body = {},
                              .inactivity = self->m_limits.pageInactivity,
                              .whole = self->m_limits.whole,
                              .largestAnswer = self->m_limits.jsonBytes};
    const HttpOutcome outcome = co_await self->start(request);
    co_return outcome;
}

/// The call itself, with the access of its beginning: a change meanwhile concerns the next call.
QCoro::Task<PiholeSession::Reply> PiholeSession::sendAs(Shared self, PiholeAccess access, PiholeRequest request)
{
    Sid sid = self->m_sid;
    if (sid->isEmpty()) sid = co_await login(self, access);
    if (!sid) co_return std::unexpected(sid.error());
    HttpOutcome outcome = co_await self->exchange(access, request, *sid);
    if (refused(outcome)) {
        self->keep(access, {});
        sid = co_await login(self, access);
        if (!sid) co_return std::unexpected(sid.error());
        outcome = co_await self->exchange(access, request, *sid);
    }
    co_return replyOf(outcome);
}

QCoro::Task<PiholeSession::Sid> PiholeSession::login(Shared self, PiholeAccess access)
{
    const PiholeRequest request{.verb = "POST",
                                .path = QStringLiteral("/api/auth"),
                                .contentType = "application/json",
                                .body = loginBody(access.password),
                                .largestAnswer = self->m_limits.jsonBytes};
    // No session id goes along: with an old one Pi-hole would take any password.
    const HttpOutcome outcome = co_await self->exchange(access, request, {});
    const Reply answer = replyOf(outcome);
    if (!answer) co_return std::unexpected(answer.error());
    if (answer->status != 200) co_return std::unexpected(PiholeAPIError::http(answer->status));
    const Sid sid = parseLogin(answer->body);
    if (sid) self->keep(access, *sid);
    co_return sid;
}

QFuture<HttpOutcome> PiholeSession::exchange(const PiholeAccess &access, const PiholeRequest &request,
                                             const QString &sid)
{
    HttpRequest http{.verb = request.verb,
                     .url = address(access.port, request.path, request.query),
                     .headers = {},
                     .body = request.body,
                     .inactivity = m_limits.inactivity,
                     .whole = m_limits.whole,
                     .largestAnswer = request.largestAnswer};
    if (!sid.isEmpty()) http.headers.append({"X-FTL-SID", sid.toLatin1()});
    if (!request.contentType.isEmpty()) http.headers.append({"Content-Type", request.contentType});
    return start(http);
}

QFuture<HttpOutcome> PiholeSession::start(HttpRequest request)
{
    const int port = request.url.port();
    if (!m_network || port < 1 || port > 65535) return unreachableOutcome();
    return HttpExchange::start(*m_network, request);
}

/// Remembers the session id, unless it belongs to an access that has been replaced meanwhile.
void PiholeSession::keep(const PiholeAccess &access, const QString &sid)
{
    if (access == m_access) m_sid = sid;
}

} // namespace corvane
