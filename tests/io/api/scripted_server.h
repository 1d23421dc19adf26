#pragma once

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QObject>
#include <QTcpServer>

#include <chrono>
#include <functional>

class QTcpSocket;

namespace corvane::test {

/// One request as it arrived.
struct ReceivedRequest {
    QByteArray verb;
    QByteArray target;
    /// Names in lower case.
    QHash<QByteArray, QByteArray> headers;
    QByteArray body;
    /// Counts the connections of the server from 1.
    int connection = 0;
};

/// What the server does about one request.
struct Reaction {
    QByteArray bytes;
    /// Sent after `bytes` again and again for as long as somebody listens.
    QByteArray endlessly = {};
    /// A pause before each single byte; none sends everything at once.
    std::chrono::milliseconds drip{0};
    /// A pause before anything happens.
    std::chrono::milliseconds delay{0};
    bool close = false;
};

/// A web server on a free loopback port that does exactly what its script says, right or wrong.
class ScriptedServer : public QObject {
    Q_OBJECT

public:
    using Script = std::function<Reaction(const ReceivedRequest &)>;

    explicit ScriptedServer(Script script);

    [[nodiscard]] int port() const { return m_server.serverPort(); }
    [[nodiscard]] const QList<ReceivedRequest> &requests() const { return m_requests; }
    [[nodiscard]] int requestsTo(const QByteArray &target) const;
    [[nodiscard]] int connections() const { return m_connections; }
    [[nodiscard]] int openConnections() const { return m_openConnections; }
    /// Bytes that left the server.
    [[nodiscard]] qint64 sent() const { return m_sent; }
    /// Answers requests to this address as soon as their head is there, and reads no further on that connection.
    void answerEarly(const QByteArray &target) { m_earlyTarget = target; }
    /// Does what a server does to connections nobody has used for a while.
    void closeConnections();
    /// Sends bytes that nobody asked for over every open connection.
    void say(const QByteArray &bytes);

private:
    void onConnection();
    void onBytes(QTcpSocket *socket, int connection, QByteArray &pending);
    void react(QTcpSocket *socket, const Reaction &reaction);
    void send(QTcpSocket *socket, const Reaction &reaction);
    void dripByte(QTcpSocket *socket, const Reaction &reaction);
    void sendEndlessly(QTcpSocket *socket, const QByteArray &bytes);

    QTcpServer m_server;
    Script m_script;
    QByteArray m_earlyTarget;
    QList<ReceivedRequest> m_requests;
    int m_connections = 0;
    int m_openConnections = 0;
    qint64 m_sent = 0;
};

/// An answer in good form.
[[nodiscard]] Reaction answer(int status, const QByteArray &body, const QByteArray &moreHeaders = {});
/// A script in which a login succeeds with the session id "good" and everything else gets `reaction`.
[[nodiscard]] ScriptedServer::Script afterLogin(const Reaction &reaction);

} // namespace corvane::test
