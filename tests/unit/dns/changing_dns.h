#pragma once

#include "dns/admin_script.h"
#include "tests/support/home_folder.h"
#include "tests/unit/dns/dns_values.h"

#include <gtest/gtest.h>

namespace corvane::test {

inline const QString kNetworksetup = QStringLiteral("/usr/sbin/networksetup");
inline const QString kOsascript = QStringLiteral("/usr/bin/osascript");
inline const QString kWifi = QStringLiteral("Wi-Fi");
inline const QString kLan = QStringLiteral("Anna's LAN");
inline const std::optional<QString> kSuccess;

/// What osascript is called with for these commands.
[[nodiscard]] inline QList<QStringList> onePrompt(const QStringList &commands)
{
    return {{QStringLiteral("-e"), AdminScript::appleScript(AdminScript::joined(commands))}};
}

} // namespace corvane::test
