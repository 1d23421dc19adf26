#include "remote/conversation.h"

#include "remote/exit_status.h"

namespace corvane::remote {

namespace {

constexpr std::chrono::seconds kPatience{3};

} // namespace

Conversation::Conversation(std::unique_ptr<QLocalSocket> socket, Handler handler, QObject *parent)
    : QObject(parent)
    , m_socket(std::move(socket))
    , m_handler(std::move(handler))
{
    m_socket->setReadBufferSize(kLongestRequest);
    connect(m_socket.get(), &QLocalSocket::readyRead, this, &Conversation::read);
    connect(m_socket.get(), &QLocalSocket::disconnected, this, &QObject::deleteLater);
    m_patience.setSingleShot(true);
    connect(&m_patience, &QTimer::timeout, m_socket.get(), &QLocalSocket::abort);
    m_patience.start(kPatience);
    // It may have spoken, or gone, before anybody listened.
    QTimer::singleShot(0, this, [this] {
        read();
        if (m_socket->state() == QLocalSocket::UnconnectedState) deleteLater();
    });
}

void Conversation::read()
{
    if (m_asked) return;
    if (m_socket->canReadLine()) return take(m_socket->readLine(kLongestRequest + 1).chopped(1));
    if (m_socket->bytesAvailable() >= kLongestRequest) m_socket->abort();
}

void Conversation::take(const QByteArray &line)
{
    m_asked = true;
    m_patience.stop();
    if (const auto request = decodeRequest(line))
        m_handler(*request, this);
    else
        end({kWrongUse, QStringLiteral("The Corvane that runs does not know this command.")});
}

void Conversation::begin(const QString &text) { m_socket->write(encode({std::nullopt, text})); }

void Conversation::end(const Answer &answer)
{
    m_socket->write(encode(answer));
    m_socket->flush();
    // Who does not read does not stay.
    m_patience.start(kPatience);
    m_socket->disconnectFromServer();
}

} // namespace corvane::remote
