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

    bool operator==(const PiholeQuery &) const = default;
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
    [[nodiscard]] static PiholeAPIError http(int code) { return PiholeAPIError(Kind::Http, code); }
    [[nodiscard]] static PiholeAPIError badResponse() { return PiholeAPIError(Kind::BadResponse); }
    /// The keychain has not said yet what the password is.
    [[nodiscard]] static PiholeAPIError noPassword() { return PiholeAPIError(Kind::NoPassword); }

    [[nodiscard]] Kind kind() const { return m_kind; }
    /// The HTTP status of `Kind::Http`, else 0.
    [[nodiscard]] int code() const { return m_code; }
    /// One sentence for the user.
    [[nodiscard]] QString description() const;

    bool operator==(const PiholeAPIError &) const = default;

private:
    explicit PiholeAPIError(Kind kind, int code = 0)
        : m_kind(kind)
        , m_code(code)
    {}

    Kind m_kind;
    int m_code;
};

} // namespace corvane
