#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace corvane {

/// Pi-hole's counters of today.
struct PiholeSummary {
    qint64 total = 0;
    qint64 blocked = 0;
    double percentBlocked = 0;
    /// The names on Pi-hole's block lists; 0 or less for none, absent when it does not say.
    std::optional<qint64> domainsBlocked = {};
    /// When the lists were last run, in seconds since 1970 by Pi-hole's clock; 0 for never, absent when it does not
    /// say.
    std::optional<qint64> listsRun = {};

    bool operator==(const PiholeSummary &) const = default;
};

/// Whether Pi-hole blocks, and how long a pause still lasts.
struct PiholeBlocking {
    bool enabled = false;
    /// Seconds until the pause ends; absent when no timer runs.
    std::optional<double> timerSeconds;

    bool operator==(const PiholeBlocking &) const = default;
};

/// One entry of Pi-hole's query log.
struct PiholeQuery {
    QString domain;
    /// Pi-hole's status word for the query.
    QString status;
    /// Seconds since 1970, by Pi-hole's clock.
    double time = 0;
    /// The name behind the asked one for which it was blocked; empty when it was blocked itself.
    QString cname = {};
    /// Which list (below 0) or rule (above 0) decided; absent when none did.
    std::optional<qint64> decidedBy = {};

    bool operator==(const PiholeQuery &) const = default;
};

/// One of Pi-hole's own rules for names, with the comment that says whose it is.
struct PiholeRule {
    enum class Kind { AllowedName, AllowedPattern, DeniedName, DeniedPattern };

    Kind kind = Kind::AllowedName;
    /// A name, or a regular expression with Pi-hole's options behind it (";reply=NXDOMAIN").
    QString domain = {};
    QString comment = {};
    bool enabled = true;
    /// What the query log calls it; 0 for a rule that Pi-hole does not have yet.
    qint64 id = 0;

    bool operator==(const PiholeRule &) const = default;
};

/// One list of names that Pi-hole has subscribed to, as its last run left it.
struct PiholeList {
    /// How the last run came by it.
    enum class Fetch { Never, Fetched, Unchanged, OldCopy, Nothing };

    qint64 id = 0;
    QString address;
    QString comment;
    bool enabled = true;
    Fetch fetch = Fetch::Never;
    qint64 names = 0;
    /// Lines that hold no name; a log-in page has nothing else.
    qint64 otherLines = 0;

    bool operator==(const PiholeList &) const = default;
};

/// Pi-hole's settings as the zip archive that it made. Not a bare QByteArray: a null pointer turns into one, which
/// makes a task of `std::expected` of it ambiguous to await.
struct PiholeArchive {
    QByteArray bytes;

    bool operator==(const PiholeArchive &) const = default;
};

/// Why a call to Pi-hole failed.
class PiholeAPIError {
public:
    enum class Kind { Unreachable, Unauthorized, Http, BadResponse, NoPassword };

    [[nodiscard]] static PiholeAPIError unreachable() { return PiholeAPIError(Kind::Unreachable); }
    [[nodiscard]] static PiholeAPIError unauthorized() { return PiholeAPIError(Kind::Unauthorized); }
    /// `body`: what Pi-hole said about it.
    [[nodiscard]] static PiholeAPIError http(int code, const QByteArray &body = {});
    [[nodiscard]] static PiholeAPIError badResponse() { return PiholeAPIError(Kind::BadResponse); }
    /// The keychain has not said yet what the password is.
    [[nodiscard]] static PiholeAPIError noPassword() { return PiholeAPIError(Kind::NoPassword); }

    [[nodiscard]] Kind kind() const { return m_kind; }
    /// The HTTP status of `Kind::Http`, else 0.
    [[nodiscard]] int code() const { return m_code; }
    /// One sentence for the user.
    [[nodiscard]] QString description() const;

    /// What the user can do about it where the sentence itself does not say; else empty.
    [[nodiscard]] QString advice() const { return m_advice; }

    bool operator==(const PiholeAPIError &other) const { return m_kind == other.m_kind && m_code == other.m_code; }

private:
    explicit PiholeAPIError(Kind kind, int code = 0)
        : m_kind(kind)
        , m_code(code)
    {}

    Kind m_kind;
    int m_code;
    QString m_advice;
};

} // namespace corvane
