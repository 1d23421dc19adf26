#pragma once

#include <QString>

namespace corvane {

/// Whether the password has fewer characters, as its user would count them, than the rules ask for.
[[nodiscard]] bool passwordTooShort(const QString &password);

/// Whether the password has a character that is not allowed.
[[nodiscard]] bool passwordHasOtherCharacters(const QString &password);

} // namespace corvane
