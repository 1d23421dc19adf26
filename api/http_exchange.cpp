#include "api/http_exchange.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>

namespace corvane {

namespace {

/// Bytes that Qt may hold before this side has read them.
constexpr qint64 kReadAhead = qint64{1} << 20;

QNetworkRequest networkRequest(const HttpRequest &request)
{
    QNetworkRequest out(request.url);
    out.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
    out.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    out.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    out.setAttribute(QNetworkRequest::AuthenticationReuseAttribute, QNetworkRequest::Manual);
    out.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::AlwaysNetwork);
    out.setAttribute(QNetworkRequest::CacheSaveControlAttribute, false);
    out.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
    out.setAttribute(QNetworkRequest::Http2CleartextAllowedAttribute, false);
    out.setHeader(QNetworkRequest::UserAgentHeader, QByteArrayLiteral("Corvane"));
    // Asking for it ourselves keeps Qt from unpacking answers, so that a small one cannot become a huge one.
    out.setRawHeader("Accept-Encoding", "identity");
    for (const auto &[name, value] : request.headers)
        out.setRawHeader(name, value);
    return out;
}

/// Whether the connection itself failed. Codes above this range only restate the HTTP status.
bool connectionFailed(QNetworkReply::NetworkError error)
{
    return (error > QNetworkReply::NoError && error < QNetworkReply::ProxyConnectionRefusedError) ||
           error == QNetworkReply::ProtocolFailure;
}

} // namespace

QFuture<HttpOutcome> HttpExchange::start(QNetworkAccessManager &manager, const HttpRequest &request)
{
    return (new HttpExchange(manager, request))->m_promise.future();
}

HttpExchange::HttpExchange(QNetworkAccessManager &manager, const HttpRequest &request)
    : QObject(&manager)
    , m_reply(manager.sendCustomRequest(networkRequest(request), request.verb, request.body))
    , m_largestAnswer(request.largestAnswer)
{
    m_promise.start();
    m_reply->setParent(this);
    m_reply->setReadBufferSize(kReadAhead);
    connect(m_reply, &QNetworkReply::metaDataChanged, this, &HttpExchange::onProgress);
    connect(m_reply, &QNetworkReply::uploadProgress, this, &HttpExchange::onProgress);
    connect(m_reply, &QNetworkReply::readyRead, this, &HttpExchange::onReadyRead);
    connect(m_reply, &QNetworkReply::finished, this, &HttpExchange::onFinished);
    for (QTimer *timer : {&m_inactivity, &m_deadline}) {
        timer->setSingleShot(true);
        timer->setTimerType(Qt::PreciseTimer);
        connect(timer, &QTimer::timeout, this, [this] { giveUp(HttpFailure::Unreachable); });
    }
    m_inactivity.start(request.inactivity);
    m_deadline.start(request.whole);
}

HttpExchange::~HttpExchange() { settle(std::unexpected(HttpFailure::Unreachable)); }

void HttpExchange::onProgress()
{
    if (!m_settled) m_inactivity.start();
}

void HttpExchange::onReadyRead()
{
    if (m_settled) return;
    onProgress();
    m_body += m_reply->readAll();
    if (m_body.size() > m_largestAnswer) giveUp(HttpFailure::TooLarge);
}

void HttpExchange::onFinished()
{
    onReadyRead();
    if (complete())
        settle(HttpAnswer{m_reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt(), m_body});
    else
        settle(std::unexpected(HttpFailure::Unreachable));
    deleteLater();
}

bool HttpExchange::complete() const
{
    const bool answered = m_reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt() > 0;
    const QVariant promised = m_reply->header(QNetworkRequest::ContentLengthHeader);
    return answered && !connectionFailed(m_reply->error()) &&
           (!promised.isValid() || promised.toLongLong() == m_body.size());
}

void HttpExchange::giveUp(HttpFailure failure)
{
    settle(std::unexpected(failure));
    m_reply->abort();
}

void HttpExchange::settle(const HttpOutcome &outcome)
{
    if (std::exchange(m_settled, true)) return;
    m_inactivity.stop();
    m_deadline.stop();
    m_body.clear();
    m_promise.addResult(outcome);
    m_promise.finish();
}

} // namespace corvane
