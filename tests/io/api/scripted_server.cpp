#include "tests/io/api/scripted_server.h"

#include <QPointer>
#include <QTcpSocket>
#include <QTimer>

#include <algorithm>
#include <memory>
#include <optional>

namespace corvane::test {

namespace {

/// Takes one whole request off the front of what has arrived.
std::optional<ReceivedRequest> takeRequest(QByteArray &pending, const QByteArray &earlyTarget)
{
    const qsizetype headEnd = pending.indexOf("\r\n\r\n");
    if (headEnd < 0) return std::nullopt;
    QList<QByteArray> lines = pending.left(headEnd).replace('\r', QByteArray()).split('\n');
    const QList<QByteArray> first = lines.takeFirst().split(' ');
    ReceivedRequest request{first.value(0), first.value(1), {}, {}, 0};
    for (const QByteArray &line : std::as_const(lines)) {
        const qsizetype colon = line.indexOf(':');
        request.headers.insert(line.left(colon).toLower(), line.mid(colon + 1).trimmed());
    }
    const qsizetype bodyStart = headEnd + 4;
    const bool early = request.target == earlyTarget;
    const qsizetype bodyLength = early ? 0 : request.headers.value("content-length").toLongLong();
    if (pending.size() < bodyStart + bodyLength) return std::nullopt;
    request.body = pending.mid(bodyStart, bodyLength);
    pending.remove(0, bodyStart + bodyLength);
    return request;
}

} // namespace

ScriptedServer::ScriptedServer(Script script)
    : m_script(std::move(script))
{
    connect(&m_server, &QTcpServer::newConnection, this, &ScriptedServer::onConnection);
    if (!m_server.listen(QHostAddress::LocalHost)) qFatal("no loopback port to listen on");
}

int ScriptedServer::requestsTo(const QByteArray &target) const
{
    return static_cast<int>(std::ranges::count(m_requests, target, &ReceivedRequest::target));
}

void ScriptedServer::closeConnections()
{
    for (QTcpSocket *socket : m_server.findChildren<QTcpSocket *>())
        socket->disconnectFromHost();
}

void ScriptedServer::say(const QByteArray &bytes)
{
    for (QTcpSocket *socket : m_server.findChildren<QTcpSocket *>())
        socket->write(bytes);
}

void ScriptedServer::onConnection()
{
    while (QTcpSocket *socket = m_server.nextPendingConnection()) {
        const int connection = ++m_connections;
        ++m_openConnections;
        socket->setSocketOption(QTcpSocket::LowDelayOption, 1);
        auto pending = std::make_shared<QByteArray>();
        connect(socket, &QTcpSocket::readyRead, this,
                [this, socket, connection, pending] { onBytes(socket, connection, *pending); });
        connect(socket, &QTcpSocket::bytesWritten, this, [this](qint64 bytes) { m_sent += bytes; });
        connect(socket, &QTcpSocket::disconnected, this, [this, socket] {
            --m_openConnections;
            socket->deleteLater();
        });
    }
}

void ScriptedServer::onBytes(QTcpSocket *socket, int connection, QByteArray &pending)
{
    pending += socket->readAll();
    while (std::optional<ReceivedRequest> request = takeRequest(pending, m_earlyTarget)) {
        request->connection = connection;
        m_requests.append(*request);
        react(socket, m_script(*request));
        if (request->target == m_earlyTarget) {
            socket->disconnect(SIGNAL(readyRead()));
            socket->setReadBufferSize(1);
            return;
        }
    }
}

void ScriptedServer::react(QTcpSocket *socket, const Reaction &reaction)
{
    if (reaction.delay.count() > 0)
        QTimer::singleShot(reaction.delay, socket, [this, socket, reaction] { send(socket, reaction); });
    else
        send(socket, reaction);
}

void ScriptedServer::send(QTcpSocket *socket, const Reaction &reaction)
{
    if (reaction.drip.count() > 0) {
        dripByte(socket, reaction);
        return;
    }
    socket->write(reaction.bytes);
    if (!reaction.endlessly.isEmpty()) sendEndlessly(socket, reaction.endlessly);
    if (reaction.close) socket->disconnectFromHost();
}

void ScriptedServer::dripByte(QTcpSocket *socket, const Reaction &reaction)
{
    Reaction rest = reaction;
    socket->write(rest.bytes.left(1));
    rest.bytes.remove(0, 1);
    if (rest.bytes.isEmpty()) rest.bytes = rest.endlessly;
    if (!rest.bytes.isEmpty())
        QTimer::singleShot(rest.drip, socket, [this, socket, rest] { dripByte(socket, rest); });
    else if (rest.close)
        socket->disconnectFromHost();
}

void ScriptedServer::sendEndlessly(QTcpSocket *socket, const QByteArray &bytes)
{
    constexpr qint64 kAhead = 256 * 1024;
    connect(socket, &QTcpSocket::bytesWritten, socket, [socket, bytes] {
        while (socket->state() == QTcpSocket::ConnectedState && socket->bytesToWrite() < kAhead)
            socket->write(bytes);
    });
    socket->write(bytes);
}

Reaction answer(int status, const QByteArray &body, const QByteArray &moreHeaders)
{
    return {"HTTP/1.1 " + QByteArray::number(status) + " Whatever\r\nContent-Type: application/json\r\n" + moreHeaders +
            "Content-Length: " + QByteArray::number(body.size()) + "\r\nConnection: keep-alive\r\n\r\n" + body};
}

ScriptedServer::Script afterLogin(const Reaction &reaction)
{
    return [reaction](const ReceivedRequest &request) {
        if (request.target == "/api/auth")
            return answer(200, R"({"session":{"valid":true,"sid":"good","validity":1800},"took":0.1})");
        return reaction;
    };
}

} // namespace corvane::test
