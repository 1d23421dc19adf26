#include "app/left_version.h"

#include "app/version_tag.h"

namespace corvane {

namespace {

const QString kTag = QStringLiteral("leftTag");
const QString kGood = QStringLiteral("goodTag");

QString stored(const SettingsStore &settings, const QString &key)
{
    const QString text = settings.value(key).toString();
    return isVersionTag(text) ? text : QString();
}

} // namespace

QString LeftVersion::tag() const { return stored(m_settings, kTag); }

QString LeftVersion::good() const
{
    if (tag().isEmpty()) return {};
    const QString good = stored(m_settings, kGood);
    return good.isEmpty() ? tag() : good;
}

void LeftVersion::keep(const QString &tag)
{
    const QString known = good();
    store(tag, known.isEmpty() ? tag : known);
}

void LeftVersion::settle(const QString &inForce)
{
    if (inForce == good())
        forget();
    else if (inForce == tag())
        store(good(), good());
}

void LeftVersion::forget() { store({}, {}); }

void LeftVersion::store(const QString &tag, const QString &good)
{
    if (m_settings.value(kTag).toString() != tag) m_settings.setValue(kTag, tag);
    if (m_settings.value(kGood).toString() != good) m_settings.setValue(kGood, good);
}

} // namespace corvane
