#pragma once

#include "remote/conversation.h"

#include <QLocalServer>

namespace corvane::remote {

/// Hears what the same user's other programs ask of Corvane, over a socket that is nobody else's.
class Listener : public QObject {
    Q_OBJECT

public:
    /// Whoever comes while so many are being heard is sent away.
    static constexpr qsizetype kMostConversations = 8;

    explicit Listener(Conversation::Handler handler);
    ~Listener() override;

    /// Begins to listen in the place of a Corvane that has ended; false when the system does not let it.
    bool open();

private:
    void welcome();

    Conversation::Handler m_handler;
    QLocalServer m_server;
};

} // namespace corvane::remote
