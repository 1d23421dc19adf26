#include "checks/secure_dns_readers.h"

#include <QElapsedTimer>
#include <gtest/gtest.h>

namespace corvane::test {
namespace {

const SecureDNSReading kNotSet{SecureDNSState::UnknownDefault,
                               QStringLiteral("Not set by you. The default only upgrades to secure DNS when the system "
                                              "DNS server supports it, which Pi-hole does not."),
                               true};
const SecureDNSReading kUnexpected{SecureDNSState::NotReadable,
                                   QStringLiteral("The settings file has an unexpected format.")};
const SecureDNSReading kOff{SecureDNSState::Off, QStringLiteral("Secure DNS is off. Good.")};
const SecureDNSReading kAutomatic{
    SecureDNSState::Off,
    QStringLiteral("Secure DNS is on 'automatic': it is used only if the system DNS server "
                   "supports it, so Pi-hole stays in charge."),
    true};

SecureDNSReading on(const char *detail) { return {SecureDNSState::On, QString::fromUtf8(detail)}; }

SecureDNSReading reading(const char *dnsOverHttps)
{
    return readLocalState(QByteArray(R"({"browser":{},"dns_over_https":)") + dnsOverHttps + '}');
}

TEST(LocalState, Without_a_setting_the_default_applies)
{
    EXPECT_EQ(readLocalState("{}"), kNotSet);
    EXPECT_EQ(readLocalState(R"({"browser":{"dns_over_https":{"mode":"secure"}}})"), kNotSet);
    EXPECT_EQ(reading("{}"), kNotSet);
    EXPECT_EQ(reading(R"({"templates":"https://dns.example/dns-query"})"), kNotSet);
}

TEST(LocalState, A_setting_of_another_type_is_no_setting)
{
    for (const char *other :
         {R"("secure")", "[]", "null", "1", R"({"mode":1})", R"({"mode":null})", R"({"mode":{}})"}) {
        EXPECT_EQ(reading(other), kNotSet) << other;
    }
}

TEST(LocalState, Secure_bypasses_pihole)
{
    EXPECT_EQ(reading(R"({"mode":"secure"})"), on("Secure DNS is ON. This bypasses Pi-hole."));
    EXPECT_EQ(reading(R"({"mode":"secure","templates":""})"), on("Secure DNS is ON. This bypasses Pi-hole."));
    EXPECT_EQ(reading(R"({"mode":"secure","templates":7})"), on("Secure DNS is ON. This bypasses Pi-hole."));
    EXPECT_EQ(reading(R"({"mode":"secure","templates":"https://dns.example/q{?dns}"})"),
              on("Secure DNS is ON (https://dns.example/q{?dns}). This bypasses Pi-hole."));
    EXPECT_EQ(reading(R"({"mode":"secure","templates":"%1 %2"})"),
              on("Secure DNS is ON (%1 %2). This bypasses Pi-hole."));
}

TEST(LocalState, Off_and_every_other_mode_leave_pihole_in_charge)
{
    EXPECT_EQ(reading(R"({"mode":"off"})"), kOff);
    EXPECT_EQ(reading(R"({"mode":"off","templates":"https://dns.example/"})"), kOff);
    for (const char *mode : {R"({"mode":"automatic"})", R"({"mode":""})", R"({"mode":"Secure"})"}) {
        EXPECT_EQ(reading(mode), kAutomatic) << mode;
    }
}

TEST(LocalState, Anything_but_an_object_has_an_unexpected_format)
{
    const QList<QByteArray> others{"",
                                   "[]",
                                   "null",
                                   "\"secure\"",
                                   "{",
                                   R"({"dns_over_https":{"mode":"secure"})",
                                   R"({"dns_over_https":{"mode":"secure"}} x)",
                                   "{\"a\":\"\xff\xfe\"}",
                                   QByteArray(3, '\0')};
    for (const QByteArray &other : others)
        EXPECT_EQ(readLocalState(other), kUnexpected) << other.toStdString();
}

TEST(LocalState, Every_part_of_a_file_has_an_unexpected_format)
{
    const QByteArray whole = R"({"dns_over_https":{"mode":"secure","templates":"https://dns.example/"}})";
    for (qsizetype length = 0; length < whole.size(); ++length) {
        EXPECT_EQ(readLocalState(whole.first(length)), kUnexpected) << length;
    }
}

TEST(LocalState, A_million_nested_lists_end_at_once)
{
    QElapsedTimer timer;
    timer.start();
    EXPECT_EQ(readLocalState(R"({"a":)" + QByteArray(1'000'000, '[')), kUnexpected);
    EXPECT_EQ(readLocalState(QByteArray(R"({"a":)").repeated(300'000)), kUnexpected);
    EXPECT_LT(timer.elapsed(), 5000);
}

TEST(LocalState, A_server_as_long_as_a_book_is_shortened)
{
    const QByteArray book(1'000'000, 'x');
    const SecureDNSReading read = reading(R"({"mode":"secure","templates":")" + book + R"("})");
    EXPECT_EQ(read.state, SecureDNSState::On);
    EXPECT_LT(read.detail.size(), 1100);
    EXPECT_TRUE(read.detail.endsWith(QStringLiteral("x…). This bypasses Pi-hole.")));
}

} // namespace
} // namespace corvane::test
