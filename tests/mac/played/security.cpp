#include "tests/mac/played/diary.h"
#include "tests/mac/played/keychain.h"
#include "tests/mac/played/objects.h"

#include <Security/Security.h>

#include <map>

using namespace corvane::played;

namespace {

constexpr OSStatus kDuplicate = -25299;
constexpr OSStatus kNotFound = -25300;

std::map<QString, QByteArray> stored;
OSStatus refusal = 0;
bool givesText = false;

CFStringRef name(const char *text) { return reinterpret_cast<CFStringRef>(lasting(PlayedObject::Text, text)); }

QString value(CFDictionaryRef query, CFStringRef key)
{
    for (const auto &[name, value] : object(query)->pairs) {
        if (name == key) return described(value);
    }
    return {};
}

/// What tells one item from another.
QString identity(CFDictionaryRef query)
{
    return value(query, kSecClass) + u'/' + value(query, kSecAttrService) + u'/' + value(query, kSecAttrAccount);
}

void note(const char *call, CFDictionaryRef query)
{
    Diary::note(QString::fromLatin1(call) + u' ' + describedPairs(query));
}

} // namespace

extern "C" {

const CFStringRef kSecClass = name("class");
const CFStringRef kSecClassGenericPassword = name("genp");
const CFStringRef kSecAttrService = name("service");
const CFStringRef kSecAttrAccount = name("account");
const CFStringRef kSecValueData = name("data");
const CFStringRef kSecReturnData = name("returnData");
const CFStringRef kSecMatchLimit = name("limit");
const CFStringRef kSecMatchLimitOne = name("one");

OSStatus SecItemCopyMatching(CFDictionaryRef query, CFTypeRef *result)
{
    note("SecItemCopyMatching", query);
    if (refusal) return refusal;
    const auto found = stored.find(identity(query));
    if (found == stored.end()) return kNotFound;
    *result = made(givesText ? PlayedObject::Text : PlayedObject::Bytes, found->second);
    return errSecSuccess;
}

OSStatus SecItemAdd(CFDictionaryRef attributes, CFTypeRef *)
{
    note("SecItemAdd", attributes);
    if (refusal) return refusal;
    return stored.emplace(identity(attributes), value(attributes, kSecValueData).toUtf8()).second ? errSecSuccess
                                                                                                  : kDuplicate;
}

OSStatus SecItemDelete(CFDictionaryRef query)
{
    note("SecItemDelete", query);
    if (refusal) return refusal;
    return stored.erase(identity(query)) ? errSecSuccess : kNotFound;
}

} // extern "C"

namespace corvane::played {

QStringList Keychain::items()
{
    QStringList items;
    for (const auto &[identity, data] : stored)
        items << identity + u'=' + QString::fromUtf8(data);
    return items;
}

void Keychain::clear()
{
    stored.clear();
    refusal = 0;
    givesText = false;
}

void Keychain::put(const QByteArray &data) { stored[QStringLiteral("genp/Corvane/pihole-admin-password")] = data; }
void Keychain::refuse(int status) { refusal = status; }
void Keychain::answerWithText(bool on) { givesText = on; }

} // namespace corvane::played
