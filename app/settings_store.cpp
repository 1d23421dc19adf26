#include "app/settings_store.h"

#include <QSettings>

namespace corvane {

namespace {

class SystemStore final : public SettingsStore {
public:
    // What other programs or the whole desktop stored under the same names is not ours.
    SystemStore() { m_settings.setFallbacksEnabled(false); }

    [[nodiscard]] QVariant value(const QString &key) const override { return m_settings.value(key); }
    void setValue(const QString &key, const QVariant &value) override
    {
        m_settings.setValue(key, value);
        m_settings.sync(); // At once: what is done next may depend on it, and the program may not live much longer.
    }

private:
    QSettings m_settings;
};

/// A stored boolean; text stores keep it as a word.
bool storedBool(const SettingsStore &store, const QString &key, bool otherwise)
{
    const QVariant value = store.value(key);
    if (value.typeId() == QMetaType::Bool) return value.toBool();
    if (value.typeId() != QMetaType::QString) return otherwise;
    const QString word = value.toString();
    if (word == QLatin1String("true")) return true;
    return word == QLatin1String("false") ? false : otherwise;
}

} // namespace

std::unique_ptr<SettingsStore> systemSettingsStore() { return std::make_unique<SystemStore>(); }

PersistedSettings PersistedSettings::load(const SettingsStore &store)
{
    PersistedSettings settings;
    const int port = store.value(QStringLiteral("webPort")).toInt();
    if (port >= kDefaultWebPort && port <= kLastWebPort) settings.webPort = port;
    const QVariant tag = store.value(QStringLiteral("pinnedTag"));
    if (tag.typeId() == QMetaType::QString) settings.pinnedTag = tag.toString();
    settings.autostartColima = storedBool(store, QStringLiteral("autostartColima"), settings.autostartColima);
    settings.wizardFinished = storedBool(store, QStringLiteral("wizardFinished"), settings.wizardFinished);
    settings.browserReadAllowed = storedBool(store, QStringLiteral("browserReadAllowed"), settings.browserReadAllowed);
    return settings;
}

} // namespace corvane
