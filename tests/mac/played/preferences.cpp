#include "tests/mac/played/preferences.h"

#include "tests/mac/played/diary.h"
#include "tests/mac/played/objects.h"

#include <CoreFoundation/CoreFoundation.h>

#include <map>

using namespace corvane::played;

namespace {

std::map<QString, PlayedObject *> stored;

CFStringRef name(const char *text) { return reinterpret_cast<CFStringRef>(lasting(PlayedObject::Text, text)); }

QString domain(CFStringRef application, CFStringRef user, CFStringRef host)
{
    return described(application) + u'/' + described(user) + u'/' + described(host);
}

} // namespace

extern "C" {

const CFStringRef kCFPreferencesCurrentApplication = name("this application");
const CFStringRef kCFPreferencesCurrentUser = name("this user");
const CFStringRef kCFPreferencesAnyHost = name("any host");

CFPropertyListRef CFPreferencesCopyValue(CFStringRef key, CFStringRef application, CFStringRef user, CFStringRef host)
{
    const auto found = stored.find(domain(application, user, host) + u'/' + described(key));
    return found == stored.end() ? nullptr : CFRetain(found->second);
}

void CFPreferencesSetValue(CFStringRef key, CFPropertyListRef value, CFStringRef application, CFStringRef user,
                           CFStringRef host)
{
    const QString place = domain(application, user, host) + u'/' + described(key);
    Diary::note(QStringLiteral("set %1 %2=%3").arg(place).arg(object(value)->kind).arg(described(value)));
    // What is kept is a copy, like that of the system's own process.
    stored[place] = lasting(object(value)->kind, object(value)->bytes, object(value)->number);
}

Boolean CFPreferencesSynchronize(CFStringRef application, CFStringRef user, CFStringRef host)
{
    Diary::note(QStringLiteral("synchronize ") + domain(application, user, host));
    return 1;
}

} // extern "C"

namespace corvane::played {

void Preferences::put(const QString &place, PlayedObject *value) { stored[place] = value; }
void Preferences::clear() { stored.clear(); }

} // namespace corvane::played
