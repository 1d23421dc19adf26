#include "api/pihole_session.h"

#include "api/pihole_answers.h"

#include <QCoro/QCoroFuture>

namespace corvane {

namespace {

constexpr int kUnauthorized = 401;
/// Pi-hole takes three log-ins a second, right or wrong. To ask again at once with a password that it has just refused
/// would only turn the reason into "too many".
constexpr std::chrono::seconds kRefusalHolds{2};

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
    if (outcome->status < 200 || outcome->status > 299)
        return std::unexpected(PiholeAPIError::http(outcome->status, outcome->body));
    return *outcome;
}

} // namespace

PiholeSession::PiholeSession(const ExchangeLimits &limits)
    : m_limits(limits)
    , m_http(std::make_unique<HttpClient>())
{}

void PiholeSession::configure(const PiholeAccess &access)
{
    if (access == m_access) return;
    m_access = access;
    m_sid.clear();
}

void PiholeSession::close()
{
    m_calls.close();
    m_longCall.reset();
    m_http.reset();
}

QCoro::Task<PiholeSession::Reply> PiholeSession::send(Shared self, PiholeRequest request)
{
    const bool admitted = co_await self->m_calls.enter();
    if (!admitted) co_return std::unexpected(PiholeAPIError::unreachable());
    const Turn turn(self->m_calls);
    const Reply answer = co_await sendAs(self, self->m_access, request);
    co_return answer;
}

QCoro::Task<HttpOutcome> PiholeSession::visit(Shared self, QByteArray target)
{
    const bool admitted = co_await self->m_calls.enter();
    if (!admitted) co_return std::unexpected(HttpFailure::Unreachable);
    const Turn turn(self->m_calls);
    const HttpRequest request{.port = self->m_access.port,
                              .verb = "GET",
                              .target = target,
                              .inactivity = self->m_limits.pageInactivity,
                              .whole = self->m_limits.whole,
                              .largestAnswer = self->m_limits.jsonBytes};
    const HttpOutcome outcome = co_await self->start(request);
    co_return outcome;
}

/// The call itself, with the access of its beginning: a change during it concerns the next call.
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
    if (!access.password) co_return std::unexpected(PiholeAPIError::noPassword());
    const PiholeRequest request{.verb = "POST",
                                .target = "/api/auth",
                                .contentType = "application/json",
                                .body = loginBody(*access.password),
                                .largestAnswer = self->m_limits.jsonBytes};
    if (self->refusedJustNow(access)) co_return std::unexpected(PiholeAPIError::unauthorized());
    // No session id goes along: with an old one Pi-hole would take any password.
    const HttpOutcome outcome = co_await self->exchange(access, request, {});
    const Reply answer = replyOf(outcome);
    if (refused(outcome)) self->rememberRefusal(access);
    if (!answer) co_return std::unexpected(answer.error());
    if (answer->status != 200) co_return std::unexpected(PiholeAPIError::http(answer->status));
    const Sid sid = parseLogin(answer->body);
    if (sid) self->keep(access, *sid);
    co_return sid;
}

QCoro::Task<PiholeSession::Reply> PiholeSession::sendLong(Shared self, PiholeRequest request)
{
    const PiholeAccess access = self->m_access;
    // The small question first, so that the session that goes along is a good one.
    const PiholeRequest small{.target = "/api/dns/blocking", .largestAnswer = self->m_limits.jsonBytes};
    const Reply welcome = co_await send(self, small);
    if (!welcome) co_return welcome;
    if (!self->m_http || self->m_longCall) co_return std::unexpected(PiholeAPIError::unreachable());

    HttpRequest http = self->requestFor(access, request, self->m_sid);
    http.inactivity = self->m_limits.longInactivity;
    http.whole = self->m_limits.longWhole;
    // More bytes may follow the answer, which belong to no other.
    http.headers.emplace_back(QByteArray("Connection"), QByteArray("close"));
    self->m_longCall = std::make_unique<HttpClient>();
    const HttpOutcome outcome = co_await self->m_longCall->send(http);
    self->m_longCall.reset();
    co_return replyOf(outcome);
}

HttpRequest PiholeSession::requestFor(const PiholeAccess &access, const PiholeRequest &request,
                                      const QString &sid) const
{
    HttpRequest http{.port = access.port,
                     .verb = request.verb,
                     .target = request.target,
                     .body = request.body,
                     .inactivity = m_limits.inactivity,
                     .whole = m_limits.whole,
                     .largestAnswer = request.largestAnswer,
                     .heard = request.heard};
    if (!sid.isEmpty()) http.headers.append({"X-FTL-SID", sid.toLatin1()});
    if (!request.contentType.isEmpty()) http.headers.append({"Content-Type", request.contentType});
    return http;
}

QFuture<HttpOutcome> PiholeSession::exchange(const PiholeAccess &access, const PiholeRequest &request,
                                             const QString &sid)
{
    return start(requestFor(access, request, sid));
}

bool PiholeSession::refusedJustNow(const PiholeAccess &access) const
{
    return m_refused == access && !m_refusalHolds.hasExpired();
}

void PiholeSession::rememberRefusal(const PiholeAccess &access)
{
    m_refused = access;
    m_refusalHolds.setRemainingTime(kRefusalHolds);
}

QFuture<HttpOutcome> PiholeSession::start(const HttpRequest &request)
{
    if (!m_http || request.port < 1 || request.port > 65535) return unreachableOutcome();
    return m_http->send(request);
}

/// Remembers the session id, unless it belongs to an access that has been replaced since.
void PiholeSession::keep(const PiholeAccess &access, const QString &sid)
{
    if (access == m_access) m_sid = sid;
}

} // namespace corvane
