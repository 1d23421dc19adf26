#include "app/release_feed.h"

#include "app/completion.h"
#include "app/version_tag.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QTimer>

#include <chrono>
#include <memory>

namespace corvane {

namespace {

using Answer = std::expected<QByteArray, QString>;

constexpr std::chrono::seconds kLimit{10};
constexpr qint64 kLargestAnswer = qint64(4) << 20;

QNetworkRequest feedRequest(const QUrl &feed)
{
    QNetworkRequest request(feed);
    request.setRawHeader("Accept", "application/vnd.github+json");
    request.setRawHeader("User-Agent", "Corvane");
    request.setRawHeader("Accept-Language", "en"); // not the user's own
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::NoLessSafeRedirectPolicy);
    request.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    return request;
}

/// One bounded GET; the answer's body whatever its status, as long as the exchange itself went well.
class Fetch : public QObject {
public:
    explicit Fetch(const QUrl &feed)
        : m_reply(m_network.get(feedRequest(feed)))
    {
        m_deadline.setSingleShot(true);
        connect(&m_deadline, &QTimer::timeout, this, [this] { fail(QStringLiteral("The request timed out.")); });
        connect(m_reply.get(), &QNetworkReply::readyRead, this, &Fetch::onReadyRead);
        connect(m_reply.get(), &QNetworkReply::finished, this, &Fetch::onFinished);
        m_deadline.start(kLimit);
    }

    [[nodiscard]] auto wait() { return m_answer.wait(); }

private:
    void onReadyRead()
    {
        m_body += m_reply->read(kLargestAnswer + 1 - m_body.size());
        if (m_body.size() > kLargestAnswer) fail(QStringLiteral("The answer is too large."));
    }

    void onFinished()
    {
        onReadyRead();
        const bool answered = m_reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).isValid();
        const bool failed =
            m_reply->error() != QNetworkReply::NoError && m_reply->error() < QNetworkReply::ContentAccessDenied;
        if (!answered || failed)
            fail(m_reply->errorString());
        else
            m_answer.complete(m_body);
    }

    void fail(const QString &reason) { m_answer.complete(std::unexpected(reason)); }

    QNetworkAccessManager m_network;
    std::unique_ptr<QNetworkReply> m_reply;
    QTimer m_deadline;
    QByteArray m_body;
    Completion<Answer> m_answer;
};

} // namespace

QCoro::Task<std::expected<std::optional<QString>, QString>> ReleaseFeed::newestTag(QUrl feed)
{
    // Deleted by the event loop: the coroutine goes on inside one of its signals.
    const std::unique_ptr<Fetch, void (*)(Fetch *)> fetch(new Fetch(feed), [](Fetch *done) { done->deleteLater(); });
    const Answer answer = co_await fetch->wait();
    if (!answer) co_return std::unexpected(answer.error());
    co_return parse(*answer);
}

std::optional<QString> ReleaseFeed::parse(const QByteArray &answer)
{
    const QString tag = QJsonDocument::fromJson(answer).object().value(QLatin1String("tag_name")).toString();
    return isVersionTag(tag) ? std::optional(tag) : std::nullopt;
}

} // namespace corvane
