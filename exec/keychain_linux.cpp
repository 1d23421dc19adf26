#include "exec/keychain.h"

#include <QByteArray>
#include <QByteArrayView>
#include <libsecret/secret.h>

#include <memory>

namespace corvane {

namespace {

constexpr const char *kService = "Corvane";
constexpr const char *kAccount = "pihole-admin-password";
constexpr const char *kLabel = "Corvane: Pi-hole admin password";

const SecretSchema &schema()
{
    static const SecretSchema kSchema = {
        "app.corvane.Corvane",
        SECRET_SCHEMA_NONE,
        {{"service", SECRET_SCHEMA_ATTRIBUTE_STRING}, {"account", SECRET_SCHEMA_ATTRIBUTE_STRING}, {nullptr, {}}},
        0,
        nullptr,
        nullptr,
        nullptr,
        nullptr,
        nullptr,
        nullptr,
        nullptr,
    };
    return kSchema;
}

struct SecretRelease {
    void operator()(SecretValue *value) const { secret_value_unref(value); }
};
using Secret = std::unique_ptr<SecretValue, SecretRelease>;

std::optional<QString> validText(QByteArrayView bytes)
{
    return bytes.isValidUtf8() ? std::optional(QString::fromUtf8(bytes)) : std::nullopt;
}

} // namespace

std::optional<QString> Keychain::load()
{
    const Secret secret(secret_password_lookup_binary_sync(&schema(), nullptr, nullptr, "service", kService, "account",
                                                           kAccount, nullptr));
    if (!secret) return std::nullopt;
    gsize length = 0;
    const gchar *bytes = secret_value_get(secret.get(), &length);
    return validText(QByteArrayView(bytes, static_cast<qsizetype>(length)));
}

bool Keychain::save(const QString &password)
{
    remove();
    const QByteArray bytes = password.toUtf8();
    const Secret secret(secret_value_new(bytes.constData(), bytes.size(), "text/plain"));
    return secret_password_store_binary_sync(&schema(), SECRET_COLLECTION_DEFAULT, kLabel, secret.get(), nullptr,
                                             nullptr, "service", kService, "account", kAccount, nullptr) == TRUE;
}

void Keychain::remove()
{
    secret_password_clear_sync(&schema(), nullptr, nullptr, "service", kService, "account", kAccount, nullptr);
}

} // namespace corvane
