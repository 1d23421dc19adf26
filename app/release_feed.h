#pragma once

#include <QCoro/QCoroTask>
#include <QString>
#include <QUrl>

#include <expected>
#include <optional>

namespace corvane {

/// Asks the public release feed for the newest version of the Pi-hole image.
class ReleaseFeed {
public:
    /// The newest tag, absent when the answer holds none of the right form; or why the feed could not be asked, in the
    /// network's words. Takes at most 10 seconds and reads at most 4 MiB; only HTTPS is trusted.
    [[nodiscard]] static QCoro::Task<std::expected<std::optional<QString>, QString>> newestTag(QUrl feed);

    /// The tag in the feed's answer.
    [[nodiscard]] static std::optional<QString> parse(const QByteArray &answer);
};

} // namespace corvane
