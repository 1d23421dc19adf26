#include "app/new_password.h"

namespace corvane {

namespace {

const QString kKey = QStringLiteral("newPassword");

} // namespace

bool NewPassword::isOnItsWay() const { return m_settings.value(kKey).toBool(); }

void NewPassword::begin() { m_settings.setValue(kKey, true); }

void NewPassword::end()
{
    if (isOnItsWay()) m_settings.setValue(kKey, false);
}

} // namespace corvane
