#include "checks/secure_dns_readers.h"

#include <gtest/gtest.h>

namespace corvane::test {
namespace {

const SecureDNSReading kNotSet{
    SecureDNSState::UnknownDefault,
    QStringLiteral("Not set by you. Firefox enables secure DNS by default in some countries, "
                   "so check the setting."),
    true};
const SecureDNSReading kUnreadable{SecureDNSState::NotReadable, QStringLiteral("Could not read Firefox's prefs.js.")};
const SecureDNSReading kOn{SecureDNSState::On,
                           QStringLiteral("Secure DNS is ON (network.trr.mode = 2). This bypasses Pi-hole.")};
const SecureDNSReading kOff{SecureDNSState::Off,
                            QStringLiteral("Secure DNS is switched off (network.trr.mode = 5). Good.")};

SecureDNSReading other(const char *value)
{
    return {SecureDNSState::UnknownDefault, QStringLiteral("network.trr.mode = %1.").arg(QString::fromUtf8(value))};
}

QByteArray line(const QByteArray &value) { return "user_pref(\"network.trr.mode\", " + value + ");\n"; }

const QByteArray kHeader = "// Mozilla User Preferences\n\n"
                           "// If you make changes to this file while the application is running, they are lost.\n\n"
                           "user_pref(\"app.update.lastUpdateTime\", 1700000000);\n";

TEST(Prefs, Without_the_key_the_default_applies)
{
    EXPECT_EQ(readPrefs(""), kNotSet);
    EXPECT_EQ(readPrefs(kHeader), kNotSet);
}

TEST(Prefs, Modes_two_and_three_bypass_pihole)
{
    EXPECT_EQ(readPrefs(kHeader + line("2")), kOn);
    EXPECT_EQ(readPrefs(line("3")).state, SecureDNSState::On);
    EXPECT_EQ(readPrefs(line("3")).detail,
              QStringLiteral("Secure DNS is ON (network.trr.mode = 3). This bypasses Pi-hole."));
}

TEST(Prefs, Mode_five_is_off) { EXPECT_EQ(readPrefs(kHeader + line("5") + kHeader), kOff); }

TEST(Prefs, Mode_zero_is_firefoxs_own_choice)
{
    const SecureDNSReading zero{
        SecureDNSState::UnknownDefault,
        QStringLiteral("network.trr.mode = 0 (Firefox default). Firefox may still turn secure DNS "
                       "on for some countries."),
        true};
    EXPECT_EQ(readPrefs(line("0")), zero);
}

TEST(Prefs, Any_other_value_is_shown_as_it_is_written)
{
    EXPECT_EQ(readPrefs(line("1")), other("1"));
    EXPECT_EQ(readPrefs(line("4")), other("4"));
    EXPECT_EQ(readPrefs(line("-2")), other("-2"));
    EXPECT_EQ(readPrefs(line("2.0")), other("2.0"));
    EXPECT_EQ(readPrefs(line("0x2")), other("0x2"));
    EXPECT_EQ(readPrefs(line("\"2\"")), other("\"2\""));
    EXPECT_EQ(readPrefs(line("99999999999999999999")), other("99999999999999999999"));
    EXPECT_EQ(readPrefs(line("zwölf")), other("zwölf"));
    EXPECT_EQ(readPrefs(line("%1")), other("%1"));
}

TEST(Prefs, A_line_without_a_value_shows_none)
{
    EXPECT_EQ(readPrefs("\"network.trr.mode\""), other(""));
    EXPECT_EQ(readPrefs("user_pref(\"network.trr.mode\")\n5, 2"), other(""));
    EXPECT_EQ(readPrefs("user_pref(\"network.trr.mode\","), other(""));
}

TEST(Prefs, Blanks_and_punctuation_around_the_value_do_not_count)
{
    EXPECT_EQ(readPrefs("user_pref(\"network.trr.mode\",\t 2 \t) ; \r\n"), kOn);
    EXPECT_EQ(readPrefs("user_pref(\"network.trr.mode\",5);"), kOff);
    EXPECT_EQ(readPrefs("user_pref(\"network.trr.mode\", 2, 5);"), kOn);
}

TEST(Prefs, The_first_of_several_lines_counts)
{
    EXPECT_EQ(readPrefs(line("5") + line("2")), kOff);
    EXPECT_EQ(readPrefs(line("2") + line("5")), kOn);
}

TEST(Prefs, Only_the_key_in_its_own_quotes_counts)
{
    const QByteArray lookalikes = "user_pref(\"network.trr.mode2\", 2);\n"
                                  "user_pref(\"x.network.trr.mode\", 2);\n"
                                  "user_pref('network.trr.mode', 2);\n"
                                  "user_pref(\"note\", \"set \\\"network.trr.mode\\\", 2\");\n"
                                  "user_pref(\"network.trr.uri\", \"https://dns.example/\");\n"
                                  "// network.trr.mode, 2\n";
    EXPECT_EQ(readPrefs(lookalikes), kNotSet);
    EXPECT_EQ(readPrefs(lookalikes + line("5")), kOff);
}

TEST(Prefs, Bytes_that_are_no_text_cannot_be_read)
{
    for (const char *bytes : {"\xff", "\xc3", "\xed\xa0\x80", "\xf5\x80\x80\x80"}) {
        EXPECT_EQ(readPrefs(line("5") + bytes), kUnreadable);
    }
    EXPECT_EQ(readPrefs(line("5") + "// 🙂 ü\n"), kOff);
    EXPECT_EQ(readPrefs(QByteArray(4, '\0') + '\n' + line("5")), kOff);
}

TEST(Prefs, A_value_as_long_as_a_book_is_shortened)
{
    EXPECT_LT(readPrefs(line(QByteArray(1'000'000, '7'))).detail.size(), 1100);
}

TEST(Prefs, A_line_of_many_megabytes_is_read)
{
    const QByteArray filler(20'000'000, 'x');
    EXPECT_EQ(readPrefs(filler + "\"network.trr.mode\", 2, " + filler), kOn);
}

} // namespace
} // namespace corvane::test
