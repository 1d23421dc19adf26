#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

namespace corvane {

/// Whether a browser asks a DNS server of its own.
enum class SecureDNSState {
    On,             ///< Its own secure DNS is used: Pi-hole is bypassed.
    Off,            ///< The system's DNS is used.
    UnknownDefault, ///< Not set by the user; the browser's default applies.
    NotReadable,    ///< Its settings could not be read.
    NotApplicable,  ///< It has no such switch, or is not installed.
};

/// One browser and what its settings mean for Pi-hole.
struct BrowserInfo {
    /// "chrome", "edge", "brave", "firefox" or "safari".
    QString id;
    QString name;
    QString bundleID;
    /// The browser's own address of its privacy settings page.
    std::optional<QString> settingsURL;
    bool installed = false;
    SecureDNSState state = SecureDNSState::NotApplicable;
    /// One sentence for the user.
    QString detail;
    /// What to do in the browser, step by step.
    QStringList steps;
    /// The browser itself decides whether it uses secure DNS: the user has not.
    bool decidesItself = false;

    bool operator==(const BrowserInfo &) const = default;
};

} // namespace corvane
