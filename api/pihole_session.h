#pragma once

#include "api/call_queue.h"
#include "api/exchange_limits.h"
#include "api/http_client.h"
#include "api/pihole_types.h"

#include <QByteArray>
#include <QCoro/QCoroTask>
#include <QDeadlineTimer>
#include <QString>

#include <expected>
#include <functional>
#include <memory>
#include <optional>

namespace corvane {

/// One call of the API: what is asked, not who asks.
struct PiholeRequest {
    QByteArray verb = "GET";
    /// Path and query, encoded.
    QByteArray target;
    QByteArray contentType = {};
    QByteArray body = {};
    qint64 largestAnswer = 0;
    /// Is given the body of a good answer as it comes.
    std::function<void(const QByteArray &)> heard = nullptr;
};

/// Pi-hole's port and admin password.
struct PiholeAccess {
    int port = 0;
    /// Absent while nobody knows it yet.
    std::optional<QString> password = QString();

    bool operator==(const PiholeAccess &) const = default;
};

/// One login to Pi-hole and the calls made with it. The calls keep it alive, so that they outlast their caller.
class PiholeSession {
public:
    using Shared = std::shared_ptr<PiholeSession>;
    using Reply = std::expected<HttpAnswer, PiholeAPIError>;
    using Sid = std::expected<QString, PiholeAPIError>;

    explicit PiholeSession(const ExchangeLimits &limits);

    void configure(const PiholeAccess &access);
    /// Ends every call under way, and any later one, as unreachable.
    void close();
    [[nodiscard]] const ExchangeLimits &limits() const { return m_limits; }

    /// An answer with a status from 200 to 299. Logs in when there is no session, and once more when
    /// Pi-hole no longer takes the one there is.
    [[nodiscard]] static QCoro::Task<Reply> send(Shared self, PiholeRequest request);
    /// The same for a call that takes its time, on a connection of its own, so that others need not wait for it. One at
    /// a time.
    [[nodiscard]] static QCoro::Task<Reply> sendLong(Shared self, PiholeRequest request);
    /// The outcome of asking for a page without a login.
    [[nodiscard]] static QCoro::Task<HttpOutcome> visit(Shared self, QByteArray target);

private:
    [[nodiscard]] static QCoro::Task<Sid> login(Shared self, PiholeAccess access);
    [[nodiscard]] static QCoro::Task<Reply> sendAs(Shared self, PiholeAccess access, PiholeRequest request);
    [[nodiscard]] HttpRequest requestFor(const PiholeAccess &access, const PiholeRequest &request,
                                         const QString &sid) const;
    [[nodiscard]] QFuture<HttpOutcome> exchange(const PiholeAccess &access, const PiholeRequest &request,
                                                const QString &sid);
    [[nodiscard]] QFuture<HttpOutcome> start(const HttpRequest &request);
    [[nodiscard]] bool refusedJustNow(const PiholeAccess &access) const;
    void rememberRefusal(const PiholeAccess &access);
    void keep(const PiholeAccess &access, const QString &sid);

    ExchangeLimits m_limits;
    PiholeAccess m_access;
    QString m_sid;
    PiholeAccess m_refused;
    QDeadlineTimer m_refusalHolds;
    CallQueue m_calls;
    std::unique_ptr<HttpClient> m_http;
    std::unique_ptr<HttpClient> m_longCall;
};

} // namespace corvane
