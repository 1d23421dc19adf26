#include "app/redaction.h"

#include <gtest/gtest.h>

#include <random>

namespace corvane::test {
namespace {

Redaction::Known known()
{
    return {.passwords = {QStringLiteral("correct-horse-9"), QStringLiteral("s.e+c(r*e?t$^[")},
            .networks = {QStringLiteral("Wi-Fi"), QStringLiteral("Ada's \"LAN\" 🙂"), QStringLiteral("LAN")},
            .people = QStringList{QStringLiteral("ada")} + Redaction::namesIn(QStringLiteral("Ada B. Lovelace")),
            .machines = Redaction::namesOfMachine(QStringLiteral("ada-macbook.local")),
            .home = QStringLiteral("/Users/ada")};
}

std::string cleaned(const char *text) { return Redaction(known()).of(QString::fromUtf8(text)).toStdString(); }

TEST(Redaction, Takes_names_of_the_net_out)
{
    EXPECT_EQ(cleaned("asked bank.example.org. and www.bank.example.org:443"), "asked <name>. and <name>:443");
    EXPECT_EQ(cleaned("https://secret-site.co.uk/path?q=1"), "https://<name>/path?q=1");
    EXPECT_EQ(cleaned("_dmarc.bank.de *.bank.de 4.3.2.1.in-addr.arpa"), "<name> <name> <address><name>");
    EXPECT_EQ(cleaned("BANK.DE bücher.de xn--bcher-kva.de bank.xn--p1ai"), "<name> <name> <name> <name>");
    EXPECT_EQ(cleaned("bank。de bank．de bank%2Ede bank%2ecom"), "<name> <name> <name> <name>");
    EXPECT_EQ(cleaned("ba\u200bnk.d\u00ade"), "<name>") << "parted by what nobody sees";
}

TEST(Redaction, Takes_addresses_out)
{
    EXPECT_EQ(cleaned("192.168.1.7 8.8.8.8, 10.0.0.1:53."), "<address> <address>, <address>:53.");
    EXPECT_EQ(cleaned("fe80::1%en0 2001:db8::8a2e:370:7334 [2001:db8::1]:53"), "<address> <address> [<address>]:53");
    EXPECT_EQ(cleaned("::ffff:192.168.1.7 from192.168.1.7to src2001:db8::1"), "<address> from<address>to <address>");
    EXPECT_EQ(cleaned("11.1.1.1 1.1.1.12 127.0.0.1.bank.de"), "<address> <address> <name>");
    EXPECT_EQ(cleaned("3c:22:fb:01:02:ff 3C-22-FB-01-02-FF"), "<hardware address> <hardware address>");
    EXPECT_EQ(cleaned("bob+x@bank.example.org, ada@bank.example.org"), "<mail>, <user>@<name>");
}

TEST(Redaction, Keeps_what_every_Mac_with_Corvane_has)
{
    for (const char *text : {"127.0.0.1, then 1.1.1.1", "0.0.0.0:53 and ::1 and ::",
                             "Docker version 24.0.7, build afdd53b", "colima version 0.9.1", "pihole/pihole:2026.09.0",
                             "time 12:34:56, 2026-09-21T12:34:56Z", "time 9:05:01", "docker-compose.yml and pihole.env",
                             "pi.hole", "e.g. this", "Done. Next", "ghcr.io", "level=info msg=\"done\"", "com/docker"})
        EXPECT_EQ(cleaned(text), text);
}

TEST(Redaction, Takes_secrets_out)
{
    EXPECT_EQ(cleaned("it was correct-horse-9!"), "it was <secret>!");
    EXPECT_EQ(cleaned("xs.e+c(r*e?t$^[x"), "x<secret>x");
    EXPECT_EQ(cleaned("FTLCONF_webserver_api_password=whatever it is"), "FTLCONF_webserver_api_password=<secret>");
    EXPECT_EQ(cleaned("\"password\": \"hunter2\", next"), "\"password\": <secret>, next");
    EXPECT_EQ(cleaned("Token: abc def"), "Token: <secret>");
    EXPECT_EQ(cleaned("sid='a b'"), "sid=<secret>");
}

TEST(Redaction, Takes_the_user_and_the_machine_out)
{
    EXPECT_EQ(cleaned("/Users/ada/Library and /Users/bob/x"), "~/Library and /Users/<user>/x");
    EXPECT_EQ(cleaned("Ada B. Lovelace, ADA and lovelace on ada-macbook"), "<user>, <user> and <user> on <this Mac>");
    EXPECT_EQ(cleaned("ada-macbook.local and ADA-MACBOOK"), "<this Mac> and <this Mac>");
    EXPECT_EQ(cleaned("plan B. and B"), "plan B. and B") << "too short to be told apart";
    EXPECT_EQ(cleaned("Canada and adapters"), "Canada and adapters") << "another word";
    EXPECT_EQ(cleaned("/Users/Shared/x"), "/Users/Shared/x");
}

TEST(Redaction, Takes_networks_out)
{
    EXPECT_EQ(cleaned("Wi-Fi: Automatic; Ada's \"LAN\" 🙂: 9.9.9.9"), "<network>: Automatic; <network>: <address>");
    EXPECT_EQ(cleaned("PLANS"), "PLANS");
}

TEST(Redaction, Leaves_nothing_of_a_secret_in_random_text)
{
    const QStringList secrets{QStringLiteral("correct-horse-9"), QStringLiteral("bank.example.org"),
                              QStringLiteral("192.168.1.7"), QStringLiteral("2001:db8::1"),
                              QStringLiteral("/Users/ada")};
    const QString between = QStringLiteral(" \t,;\"'()[]{}<>|&=/\\\n!?#");
    std::mt19937 random(11);
    const Redaction redaction(known());
    for (int i = 0; i < 500; ++i) {
        QString text;
        for (int part = 0; part < 6; ++part) {
            text += secrets[static_cast<qsizetype>(random() % 5)];
            text += between[static_cast<qsizetype>(random() % static_cast<std::size_t>(between.size()))];
        }
        const QString clean = redaction.of(text);
        for (const QString &secret : secrets)
            ASSERT_FALSE(clean.contains(secret)) << text.toStdString() << "\n" << clean.toStdString();
    }
}

TEST(Redaction, Endures_what_no_rule_expects)
{
    const Redaction redaction(known());
    EXPECT_EQ(redaction.of({}), QString());
    const QString dots = QStringLiteral("a.").repeated(50'000);
    EXPECT_LE(redaction.of(dots).size(), dots.size() + 16);
    const QString colons = QStringLiteral("f:").repeated(50'000);
    EXPECT_FALSE(redaction.of(colons).isEmpty());
    EXPECT_FALSE(redaction.of(QStringLiteral("password=").repeated(5'000)).isEmpty());
    EXPECT_FALSE(redaction.of(QString(QChar(0xD800)) + QStringLiteral("bank.de")).contains(QStringLiteral("bank")));
}

} // namespace
} // namespace corvane::test
