#include "platform/user_settings.h"

#include <QSettings>

namespace corvane::platform {

QVariant userSetting(const QString &key)
{
    QSettings settings;
    settings.setFallbacksEnabled(false);
    return settings.value(key);
}

void setUserSetting(const QString &key, const QVariant &value)
{
    QSettings settings;
    settings.setFallbacksEnabled(false);
    settings.setValue(key, value);
    settings.sync();
}

} // namespace corvane::platform
