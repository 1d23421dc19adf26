#pragma once

#include "checks/browser_info.h"

#include <QByteArray>

namespace corvane {

/// What a browser's settings say about its secure DNS, with one sentence for the user.
struct SecureDNSReading {
    SecureDNSState state = SecureDNSState::NotReadable;
    QString detail;
    /// The browser itself decides whether it uses secure DNS.
    bool decidesItself = false;

    bool operator==(const SecureDNSReading &) const = default;
};

/// Reads the content of a Chromium browser's "Local State".
[[nodiscard]] SecureDNSReading readLocalState(const QByteArray &bytes);

/// Reads the content of Firefox's "prefs.js".
[[nodiscard]] SecureDNSReading readPrefs(const QByteArray &bytes);

} // namespace corvane
