#include "api/http_client.h"

#include <QHostAddress>
#include <QNetworkProxy>
#include <QPointer>
#include <QTcpSocket>

#include <utility>

namespace corvane {

namespace {

/// Bytes that the socket may hold before they have been read.
constexpr qint64 kReadAhead = qint64{64} << 10;

} // namespace

HttpClient::HttpClient(QObject *parent)
    : QObject(parent)
{
    for (QTimer *timer : {&m_inactivity, &m_deadline}) {
        timer->setSingleShot(true);
        timer->setTimerType(Qt::PreciseTimer);
        connect(timer, &QTimer::timeout, this, [this] { settle(std::unexpected(HttpFailure::Unreachable)); });
    }
}

HttpClient::~HttpClient() { settle(std::unexpected(HttpFailure::Unreachable)); }

QFuture<HttpOutcome> HttpClient::send(const HttpRequest &request)
{
    Q_ASSERT(!m_busy);
    const int lastPort = std::exchange(m_request, request).port;
    m_reader = HttpAnswerReader(request.largestAnswer);
    m_told = 0;
    m_promise = QPromise<HttpOutcome>();
    m_promise.start();
    m_busy = true;
    m_inactivity.start(request.inactivity);
    m_deadline.start(request.whole);
    m_reused = connected() && lastPort == request.port;
    if (m_reused)
        writeRequest();
    else
        connectAnew();
    return m_promise.future();
}

bool HttpClient::connected() const { return m_socket && m_socket->state() == QTcpSocket::ConnectedState; }

void HttpClient::connectAnew()
{
    drop();
    m_socket = new QTcpSocket(this);
    m_socket->setProxy(QNetworkProxy::NoProxy);
    m_socket->setReadBufferSize(kReadAhead);
    connect(m_socket, &QTcpSocket::connected, this, &HttpClient::writeRequest);
    connect(m_socket, &QTcpSocket::readyRead, this, &HttpClient::onReadyRead);
    connect(m_socket, &QTcpSocket::bytesWritten, this, [this] { m_inactivity.start(); });
    connect(m_socket, &QTcpSocket::errorOccurred, this, &HttpClient::onEnd);
    connect(m_socket, &QTcpSocket::disconnected, this, &HttpClient::onEnd);
    m_socket->connectToHost(QHostAddress::LocalHost, static_cast<quint16>(m_request.port));
}

void HttpClient::writeRequest()
{
    m_socket->setSocketOption(QTcpSocket::LowDelayOption, 1);
    // A body that follows its head may have to wait for the other side's acknowledgement; small ones go along with it.
    const bool small = m_request.body.size() <= kReadAhead;
    m_socket->write(small ? headOf(m_request) + m_request.body : headOf(m_request));
    if (!small) m_socket->write(m_request.body);
}

void HttpClient::onReadyRead()
{
    if (!m_busy) {
        drop();
        return;
    }
    m_inactivity.start();
    follow(m_reader.feed(m_socket->readAll()));
}

void HttpClient::onEnd()
{
    if (m_busy && m_socket->bytesAvailable() > 0) follow(m_reader.feed(m_socket->readAll()));
    if (!m_busy) {
        drop();
        return;
    }
    // A kept connection that the server has closed by now: the request never reached anybody.
    if (std::exchange(m_reused, false) && !m_reader.started())
        connectAnew();
    else
        follow(m_reader.finish());
}

/// Hands on what came of the body.
void HttpClient::tell()
{
    const HttpAnswer &answer = m_reader.answer();
    const QByteArray news = answer.body.mid(m_told);
    if (!m_request.heard || news.isEmpty() || answer.status < 200 || answer.status > 299) return;
    m_told = answer.body.size();
    const auto heard = m_request.heard; // which may end the exchange
    heard(news);
}

void HttpClient::follow(HttpAnswerReader::State state)
{
    const QPointer<HttpClient> alive(this);
    tell();
    if (!alive || !m_busy) return;
    switch (state) {
    case HttpAnswerReader::State::Reading:
        break;
    case HttpAnswerReader::State::Complete:
        settle(m_reader.answer());
        break;
    case HttpAnswerReader::State::TooLarge:
        settle(std::unexpected(HttpFailure::TooLarge));
        break;
    case HttpAnswerReader::State::Malformed:
        settle(std::unexpected(HttpFailure::Unreachable));
        break;
    }
}

void HttpClient::settle(const HttpOutcome &outcome)
{
    if (!std::exchange(m_busy, false)) return;
    m_inactivity.stop();
    m_deadline.stop();
    if (!m_reader.reusable() || m_socket->bytesToWrite() > 0) drop();
    m_promise.addResult(outcome);
    m_promise.finish();
    m_request.body.clear();
    m_request.heard = nullptr;
    m_reader = HttpAnswerReader(0);
}

void HttpClient::drop()
{
    if (!m_socket) return;
    m_socket->disconnect(this);
    m_socket->abort();
    m_socket->deleteLater();
    m_socket = nullptr;
}

} // namespace corvane
