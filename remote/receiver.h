#pragma once

#include "app/app_model.h"
#include "remote/listener.h"

#include <QPointer>

namespace corvane::remote {

/// Does what is asked for from outside, with the flows that the windows use.
class Receiver : public QObject {
    Q_OBJECT

public:
    Receiver(AppModel &app, std::function<void()> comeForward);

    /// Begins to listen; false when the system does not let it.
    bool open() { return m_listener.open(); }

private:
    using Asker = QPointer<Conversation>;

    void receive(const Request &request, Conversation *asker);
    [[nodiscard]] Flow<> pause(Asker asker, std::chrono::seconds length);
    [[nodiscard]] Flow<> resume(Asker asker);
    [[nodiscard]] Flow<> restoreDns(Asker asker);

    AppModel &m_app;
    std::function<void()> m_comeForward;
    Listener m_listener;
};

} // namespace corvane::remote
