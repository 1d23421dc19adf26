#pragma once

#include "remote/answer.h"
#include "remote/request.h"

#include <QLocalSocket>
#include <QTimer>

#include <functional>
#include <memory>

namespace corvane::remote {

/// One who asks, from the connection to the answer. Whoever asks for nothing in time, or for too much, is sent away.
class Conversation : public QObject {
    Q_OBJECT

public:
    /// What is done with a request; it may be answered later, as long as the conversation lives.
    using Handler = std::function<void(const Request &, Conversation *)>;

    /// The conversation deletes itself once it is over.
    Conversation(std::unique_ptr<QLocalSocket> socket, Handler handler, QObject *parent);

    /// Tells that the work has begun.
    void begin(const QString &text);
    /// Tells how it ended, and closes.
    void end(const Answer &answer);

private:
    void read();
    void take(const QByteArray &line);

    std::unique_ptr<QLocalSocket> m_socket;
    Handler m_handler;
    QTimer m_patience;
    bool m_asked = false;
};

} // namespace corvane::remote
