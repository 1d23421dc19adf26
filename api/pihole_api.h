#pragma once

#include "api/exchange_limits.h"
#include "api/pihole_history.h"
#include "api/pihole_types.h"

#include <QByteArray>
#include <QCoro/QCoroTask>
#include <QList>
#include <QObject>
#include <QString>

#include <expected>
#include <functional>
#include <memory>
#include <optional>

namespace corvane {

class PiholeSession;

/// Talks to the web API of this Mac's Pi-hole: logs in with the admin password, keeps its one session, and makes one
/// call at a time, within ExchangeLimits. Deleting it ends the calls under way as unreachable; their callers hear of it
/// from the event loop.
class PiholeAPI : public QObject {
    Q_OBJECT

public:
    template <class T>
    using Answer = QCoro::Task<std::expected<T, PiholeAPIError>>;

    explicit PiholeAPI(QObject *parent = nullptr);
    explicit PiholeAPI(const ExchangeLimits &limits, QObject *parent = nullptr);
    ~PiholeAPI() override;

    /// Forgets the session when the port or the password is another than before. Without a password, calls that need a
    /// login fail.
    void configure(int port, const std::optional<QString> &password);

    /// Whether the admin page answers with a status from 200 to 399, without logging in.
    [[nodiscard]] QCoro::Task<bool> webAnswers();

    [[nodiscard]] Answer<PiholeSummary> summary();
    [[nodiscard]] Answer<PiholeBlocking> blocking();
    /// Switches blocking; `timerSeconds` after which Pi-hole switches back by itself.
    [[nodiscard]] Answer<PiholeBlocking> setBlocking(bool enabled, std::optional<int> timerSeconds);
    /// The newest `length` entries of the query log, newest first.
    [[nodiscard]] Answer<QList<PiholeQuery>> recentQueries(int length);
    /// The newest `length` questions that were blocked at that second (of Pi-hole's clock) or later, newest first.
    [[nodiscard]] Answer<QList<PiholeQuery>> blockedSince(double second, int length);
    /// The newest question for this very name, if any.
    [[nodiscard]] Answer<QList<PiholeQuery>> newestQuestion(QString name);
    /// How much of the names Pi-hole hides in its log: 0 for nothing.
    [[nodiscard]] Answer<int> privacyLevel();
    /// How much was asked and blocked in the last 24 hours.
    [[nodiscard]] Answer<PiholeHistory> history();
    /// The `count` names that were blocked most in the last 24 hours, with those that only another name led to.
    [[nodiscard]] Answer<PiholeTopBlocked> topBlocked(int count);
    [[nodiscard]] Answer<PiholeArchive> teleporterDownload();
    /// Replaces Pi-hole's settings by those of the archive; answers whether it held any.
    [[nodiscard]] Answer<bool> teleporterUpload(QByteArray archive, QString filename);
    /// Lets Pi-hole load its block lists again, which takes a second or some minutes; other calls go on beside it.
    /// Whether it came to its end. Not to be called again before: two runs at once destroy the lists. `heard` is given
    /// what the run prints, as it comes.
    [[nodiscard]] Answer<bool> updateLists(std::function<void(const QByteArray &)> heard = nullptr);

    /// Every rule of the user, and of Corvane.
    [[nodiscard]] Answer<QList<PiholeRule>> rules();
    /// The rule of this kind for this very name or expression; nothing when there is none.
    [[nodiscard]] Answer<std::optional<PiholeRule>> rule(PiholeRule::Kind kind, QString domain);
    /// Whether the rule was added; a rule of its kind and domain that is there already stays as it is.
    [[nodiscard]] Answer<bool> addRule(PiholeRule rule);
    /// Gives the rule that is there this comment, and switches it as the new one says.
    [[nodiscard]] Answer<void> replaceRule(PiholeRule rule);
    /// Takes the rule away; a missing one counts as taken away. The domain as Pi-hole spells it.
    [[nodiscard]] Answer<void> removeRule(PiholeRule::Kind kind, QString domain);
    [[nodiscard]] Answer<QList<PiholeList>> lists();

private:
    std::shared_ptr<PiholeSession> m_session;
};

} // namespace corvane
