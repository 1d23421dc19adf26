#pragma once

#include <QString>
#include <QVariant>

namespace corvane::platform {

/// What the system keeps for this user and this application under the key; invalid when there is nothing. What other
/// programs, the whole desktop or an administrator stored under the same key does not count.
[[nodiscard]] QVariant userSetting(const QString &key);

/// Keeps a boolean, an integer or a text, and has written it when it returns: what is done next may depend on it, and
/// the program may not live much longer.
void setUserSetting(const QString &key, const QVariant &value);

} // namespace corvane::platform
