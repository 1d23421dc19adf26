#include "app/left_version.h"

#include "app/version_tag.h"

namespace corvane {

namespace {

const QString kKey = QStringLiteral("leftTag");

} // namespace

QString LeftVersion::tag() const
{
    const QString stored = m_settings.value(kKey).toString();
    return isVersionTag(stored) ? stored : QString();
}

void LeftVersion::keep(const QString &tag) { m_settings.setValue(kKey, tag); }

void LeftVersion::forget()
{
    if (!m_settings.value(kKey).toString().isEmpty()) m_settings.setValue(kKey, QString());
}

} // namespace corvane
