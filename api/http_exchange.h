#pragma once

#include <QByteArray>
#include <QFuture>
#include <QList>
#include <QObject>
#include <QPromise>
#include <QTimer>
#include <QUrl>

#include <chrono>
#include <expected>
#include <utility>

class QNetworkAccessManager;
class QNetworkReply;

namespace corvane {

/// What one HTTP request says and what it may cost.
struct HttpRequest {
    QByteArray verb;
    QUrl url;
    QList<std::pair<QByteArray, QByteArray>> headers;
    QByteArray body;
    std::chrono::milliseconds inactivity;
    std::chrono::milliseconds whole;
    qint64 largestAnswer;
};

/// A complete answer, whatever its status.
struct HttpAnswer {
    int status = 0;
    QByteArray body;
};

enum class HttpFailure { Unreachable, TooLarge };

using HttpOutcome = std::expected<HttpAnswer, HttpFailure>;

/// One HTTP request and its answer, bounded in time and in size: no redirect is followed, no cookie, cache, proxy or
/// stored login is used. It deletes itself when it has ended.
class HttpExchange : public QObject {
    Q_OBJECT

public:
    /// Deleting the manager ends the exchange as unreachable. The outcome is never cancelled.
    [[nodiscard]] static QFuture<HttpOutcome> start(QNetworkAccessManager &manager, const HttpRequest &request);
    ~HttpExchange() override;

private:
    HttpExchange(QNetworkAccessManager &manager, const HttpRequest &request);

    void onProgress();
    void onReadyRead();
    void onFinished();
    void giveUp(HttpFailure failure);
    void settle(const HttpOutcome &outcome);
    [[nodiscard]] bool complete() const;

    QPromise<HttpOutcome> m_promise;
    QNetworkReply *m_reply;
    QTimer m_inactivity;
    QTimer m_deadline;
    QByteArray m_body;
    qint64 m_largestAnswer;
    bool m_settled = false;
};

} // namespace corvane
