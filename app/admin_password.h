#pragma once

#include <QString>

#include <optional>

namespace corvane {

/// The rules for Pi-hole's admin password.
class AdminPassword {
public:
    /// Fewer user-perceived characters than a password needs.
    [[nodiscard]] static bool isTooShort(const QString &password);
    /// Holds a character that is not allowed.
    [[nodiscard]] static bool hasForbiddenCharacter(const QString &password);
    /// The first rule that the password breaks, in words; absent when it breaks none.
    [[nodiscard]] static std::optional<QString> problem(const QString &password);
    /// 16 characters without look-alikes from the system's secure random source.
    [[nodiscard]] static QString generate();
};

} // namespace corvane
