#pragma once

#include <QString>

#include <expected>
#include <memory>
#include <optional>

namespace corvane {

/// Whether Corvane is opened at login, as the system keeps it.
class LoginItem {
public:
    enum class Status { NotRegistered, Enabled, RequiresApproval, NotFound };

    virtual ~LoginItem() = default;

    [[nodiscard]] virtual Status status() const = 0;
    /// Registers (true) or unregisters (false) Corvane; the reason in plain words when it did not take effect.
    virtual std::expected<void, QString> setEnabled(bool enabled) = 0;

    /// What a change came to: the system's refusal, if it gave one, and the status read back after the change.
    [[nodiscard]] static std::expected<void, QString> outcome(bool enabled, const std::optional<QString> &refusal,
                                                              Status after);
};

/// The login item of this user on this system.
[[nodiscard]] std::unique_ptr<LoginItem> systemLoginItem();

} // namespace corvane
