#pragma once

#include <QString>

#include <expected>
#include <memory>

namespace corvane {

/// Whether Corvane is opened at login, as the system keeps it.
class LoginItem {
public:
    enum class Status { NotRegistered, Enabled, RequiresApproval, NotFound };

    virtual ~LoginItem() = default;

    [[nodiscard]] virtual Status status() const = 0;
    /// Registers (true) or unregisters (false) Corvane; the reason in the system's words when it refuses.
    virtual std::expected<void, QString> setEnabled(bool enabled) = 0;
};

/// The login item of this user on this system.
[[nodiscard]] std::unique_ptr<LoginItem> systemLoginItem();

} // namespace corvane
