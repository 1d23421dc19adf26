#pragma once

#include "api/http_answer_reader.h"
#include "api/http_message.h"

#include <QFuture>
#include <QObject>
#include <QPromise>
#include <QTimer>

class QTcpSocket;

namespace corvane {

/// Makes one HTTP exchange at a time with 127.0.0.1, bounded in time and memory, and keeps the connection for the next.
/// It knows no redirects, cookies, proxies, caches or logins. Qt's network manager is not used because an endless head
/// or body keeps its thread busy past every limit, takes memory without bound, and delays whatever deletes it.
class HttpClient : public QObject {
    Q_OBJECT

public:
    explicit HttpClient(QObject *parent = nullptr);
    /// Ends the exchange under way as unreachable.
    ~HttpClient() override;

    /// Not to be called again before the exchange under way has ended. The outcome is never cancelled.
    [[nodiscard]] QFuture<HttpOutcome> send(const HttpRequest &request);

private:
    [[nodiscard]] bool connected() const;
    void connectAnew();
    void writeRequest();
    void onReadyRead();
    void onEnd();
    void follow(HttpAnswerReader::State state);
    void tell();
    void settle(const HttpOutcome &outcome);
    void drop();

    QTcpSocket *m_socket = nullptr;
    HttpRequest m_request;
    HttpAnswerReader m_reader{0};
    QPromise<HttpOutcome> m_promise;
    QTimer m_inactivity;
    QTimer m_deadline;
    /// How much of the body has been handed over.
    qsizetype m_told = 0;
    bool m_busy = false;
    bool m_reused = false;
};

} // namespace corvane
