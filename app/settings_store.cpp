#include "app/settings_store.h"

#include "platform/user_settings.h"

namespace corvane {

namespace {

/// The settings that the system keeps for this user and this application.
class SystemStore final : public SettingsStore {
public:
    [[nodiscard]] QVariant value(const QString &key) const override { return platform::userSetting(key); }
    void setValue(const QString &key, const QVariant &value) override { platform::setUserSetting(key, value); }
};

} // namespace

std::unique_ptr<SettingsStore> systemSettingsStore() { return std::make_unique<SystemStore>(); }

bool storedBool(const SettingsStore &store, const QString &key, bool otherwise)
{
    const QVariant value = store.value(key);
    if (value.typeId() == QMetaType::Bool) return value.toBool();
    if (value.typeId() != QMetaType::QString) return otherwise;
    const QString word = value.toString();
    if (word == QLatin1String("true")) return true;
    return word == QLatin1String("false") ? false : otherwise;
}

PersistedSettings PersistedSettings::load(const SettingsStore &store)
{
    PersistedSettings settings;
    const int port = store.value(QStringLiteral("webPort")).toInt();
    if (WebPorts::contain(port)) settings.webPort = port;
    const QVariant tag = store.value(QStringLiteral("pinnedTag"));
    if (tag.typeId() == QMetaType::QString) settings.pinnedTag = tag.toString();
    settings.autostartColima = storedBool(store, QStringLiteral("autostartColima"), settings.autostartColima);
    settings.wizardFinished = storedBool(store, QStringLiteral("wizardFinished"), settings.wizardFinished);
    settings.browserReadAllowed = storedBool(store, QStringLiteral("browserReadAllowed"), settings.browserReadAllowed);
    return settings;
}

} // namespace corvane
