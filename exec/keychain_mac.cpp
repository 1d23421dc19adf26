#include "exec/keychain.h"
#include "platform/mac/owned.h"

#include <QByteArray>
#include <QByteArrayView>

#include <Security/Security.h>

namespace corvane {

namespace {

Owned<CFMutableDictionaryRef> baseQuery()
{
    Owned<CFMutableDictionaryRef> query(CFDictionaryCreateMutable(
        kCFAllocatorDefault, 0, &kCFTypeDictionaryKeyCallBacks, &kCFTypeDictionaryValueCallBacks));
    CFDictionarySetValue(query.get(), kSecClass, kSecClassGenericPassword);
    CFDictionarySetValue(query.get(), kSecAttrService, CFSTR("Corvane"));
    CFDictionarySetValue(query.get(), kSecAttrAccount, CFSTR("pihole-admin-password"));
    return query;
}

std::optional<QString> validText(QByteArrayView bytes)
{
    return bytes.isValidUtf8() ? std::optional(QString::fromUtf8(bytes)) : std::nullopt;
}

} // namespace

std::optional<QString> Keychain::load()
{
    const auto query = baseQuery();
    CFDictionarySetValue(query.get(), kSecReturnData, kCFBooleanTrue);
    CFDictionarySetValue(query.get(), kSecMatchLimit, kSecMatchLimitOne);
    CFTypeRef found = nullptr;
    if (SecItemCopyMatching(query.get(), &found) != errSecSuccess || !found) return std::nullopt;
    const Owned<CFTypeRef> owner(found);
    if (CFGetTypeID(found) != CFDataGetTypeID()) return std::nullopt;
    const auto data = static_cast<CFDataRef>(found);
    return validText(QByteArrayView(CFDataGetBytePtr(data), CFDataGetLength(data)));
}

bool Keychain::save(const QString &password)
{
    remove();
    const auto item = baseQuery();
    const Owned<CFDataRef> data(password.toUtf8().toCFData());
    CFDictionarySetValue(item.get(), kSecValueData, data.get());
    return SecItemAdd(item.get(), nullptr) == errSecSuccess;
}

void Keychain::remove() { SecItemDelete(baseQuery().get()); }

} // namespace corvane
