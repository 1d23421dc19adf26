#pragma once

#include <QString>

#include <optional>

namespace corvane {

/// Keeps the one secret, Pi-hole's admin password, in the user's keychain. Each call
/// waits until the keychain has answered, which may take as long as its user takes: call it on a worker.
class Keychain {
public:
    /// The password; absent when there is none or it cannot be read.
    [[nodiscard]] static std::optional<QString> load();
    /// Replaces the item whole; false when the keychain refused (there is no item then).
    [[nodiscard]] static bool save(const QString &password);
    /// Deleting a missing item is no error.
    static void remove();
};

} // namespace corvane
