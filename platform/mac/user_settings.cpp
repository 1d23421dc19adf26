#include "platform/user_settings.h"

#include "platform/mac/owned.h"

namespace corvane::platform {

namespace {

QVariant fromNumber(CFNumberRef number)
{
    qlonglong value = 0;
    if (!CFNumberGetValue(number, kCFNumberLongLongType, &value)) return {}; // a fraction, or too large
    return value;
}

Owned<CFTypeRef> toSystem(const QVariant &value)
{
    if (value.typeId() == QMetaType::Bool)
        return Owned<CFTypeRef>(CFRetain(value.toBool() ? kCFBooleanTrue : kCFBooleanFalse));
    if (value.typeId() == QMetaType::QString) return Owned<CFTypeRef>(value.toString().toCFString());
    const qlonglong number = value.toLongLong();
    return Owned<CFTypeRef>(CFNumberCreate(kCFAllocatorDefault, kCFNumberLongLongType, &number));
}

} // namespace

// The current application is the bundle that this program was started from, by its identifier.
QVariant userSetting(const QString &key)
{
    const Owned<CFStringRef> name(key.toCFString());
    const Owned<CFTypeRef> value(CFPreferencesCopyValue(name.get(), kCFPreferencesCurrentApplication,
                                                        kCFPreferencesCurrentUser, kCFPreferencesAnyHost));
    if (!value) return {};
    const CFTypeID type = CFGetTypeID(value.get());
    if (type == CFBooleanGetTypeID()) return QVariant(CFBooleanGetValue(static_cast<CFBooleanRef>(value.get())) != 0);
    if (type == CFStringGetTypeID()) return QString::fromCFString(static_cast<CFStringRef>(value.get()));
    if (type == CFNumberGetTypeID()) return fromNumber(static_cast<CFNumberRef>(value.get()));
    return {};
}

void setUserSetting(const QString &key, const QVariant &value)
{
    const Owned<CFStringRef> name(key.toCFString());
    const Owned<CFTypeRef> kept = toSystem(value);
    CFPreferencesSetValue(name.get(), kept.get(), kCFPreferencesCurrentApplication, kCFPreferencesCurrentUser,
                          kCFPreferencesAnyHost);
    CFPreferencesSynchronize(kCFPreferencesCurrentApplication, kCFPreferencesCurrentUser, kCFPreferencesAnyHost);
}

} // namespace corvane::platform
