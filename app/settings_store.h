#pragma once

#include "facts/web_ports.h"

#include <QString>
#include <QVariant>

#include <memory>

namespace corvane {

/// The per-user settings store.
class SettingsStore {
public:
    virtual ~SettingsStore() = default;

    /// Invalid when the key is missing.
    [[nodiscard]] virtual QVariant value(const QString &key) const = 0;
    virtual void setValue(const QString &key, const QVariant &value) = 0;
};

/// The store of this user on this system.
[[nodiscard]] std::unique_ptr<SettingsStore> systemSettingsStore();

/// A stored boolean; text stores keep it as a word. What is none gives the other value.
[[nodiscard]] bool storedBool(const SettingsStore &store, const QString &key, bool otherwise);

/// The five settings that outlive the program, as they were read at its start.
struct PersistedSettings {
    int webPort = WebPorts::kDefault;
    QString pinnedTag = QStringLiteral("2026.09.0");
    bool autostartColima = true;
    bool wizardFinished = false;
    bool browserReadAllowed = false;

    /// Missing values and values that cannot be right give the defaults.
    [[nodiscard]] static PersistedSettings load(const SettingsStore &store);
};

} // namespace corvane
