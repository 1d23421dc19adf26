#include "runtime/pihole_controller.h"

#include <gtest/gtest.h>
#include <yaml-cpp/yaml.h>

#include <string>
#include <vector>

namespace corvane::test {
namespace {

std::string compose(const char *tag, int webPort, const char *zone)
{
    return PiholeController::composeText(QString::fromUtf8(tag), webPort, QString::fromUtf8(zone)).toStdString();
}

std::vector<std::string> strings(const YAML::Node &node) { return node.as<std::vector<std::string>>(); }

TEST(ComposeText, Is_the_same_byte_for_byte)
{
    const std::vector<std::string> lines = {
        "# Written by Corvane. Pinned version; ports are bound to this Mac only.",
        "name: corvane",
        "services:",
        "  pihole:",
        "    container_name: pihole",
        "    image: pihole/pihole:2026.09.0",
        "    restart: unless-stopped",
        "    ports:",
        "      - \"127.0.0.1:53:53/tcp\"",
        "      - \"127.0.0.1:53:53/udp\"",
        "      - \"127.0.0.1:8080:80/tcp\"",
        "    environment:",
        "      TZ: \"Europe/Berlin\"",
        "      FTLCONF_dns_upstreams: \"1.1.1.1\"",
        "      FTLCONF_dns_listeningMode: \"ALL\"",
        "      FTLCONF_misc_etc_dnsmasq_d: \"true\"",
        "    env_file:",
        "      - pihole.env",
        "    volumes:",
        "      - pihole_etc:/etc/pihole",
        "      - pihole_dnsmasq:/etc/dnsmasq.d",
        "volumes:",
        "  pihole_etc:",
        "    name: pihole_etc",
        "  pihole_dnsmasq:",
        "    name: pihole_dnsmasq",
    };
    std::string expected;
    for (const std::string &line : lines)
        expected += line + '\n';
    EXPECT_EQ(compose("2026.09.0", 8080, "Europe/Berlin"), expected);
}

TEST(ComposeText, Means_what_it_should_to_a_yaml_parser)
{
    const YAML::Node root = YAML::Load(compose("2025.11.1", 8088, "Etc/GMT+3"));
    EXPECT_EQ(root["name"].as<std::string>(), "corvane");
    ASSERT_EQ(root["services"].size(), 1U);

    const YAML::Node pihole = root["services"]["pihole"];
    EXPECT_EQ(pihole["container_name"].as<std::string>(), "pihole");
    EXPECT_EQ(pihole["image"].as<std::string>(), "pihole/pihole:2025.11.1");
    EXPECT_EQ(pihole["restart"].as<std::string>(), "unless-stopped");
    EXPECT_EQ(strings(pihole["ports"]),
              (std::vector<std::string>{"127.0.0.1:53:53/tcp", "127.0.0.1:53:53/udp", "127.0.0.1:8088:80/tcp"}));
    EXPECT_EQ(strings(pihole["env_file"]), std::vector<std::string>{"pihole.env"});
    EXPECT_EQ(strings(pihole["volumes"]),
              (std::vector<std::string>{"pihole_etc:/etc/pihole", "pihole_dnsmasq:/etc/dnsmasq.d"}));
    EXPECT_EQ(root["volumes"]["pihole_etc"]["name"].as<std::string>(), "pihole_etc");
    EXPECT_EQ(root["volumes"]["pihole_dnsmasq"]["name"].as<std::string>(), "pihole_dnsmasq");
}

TEST(ComposeText, Sets_four_variables_and_no_password)
{
    const YAML::Node environment = YAML::Load(compose("1", 8090, "UTC"))["services"]["pihole"]["environment"];
    ASSERT_EQ(environment.size(), 4U);
    EXPECT_EQ(environment["TZ"].as<std::string>(), "UTC");
    EXPECT_EQ(environment["FTLCONF_dns_upstreams"].as<std::string>(), "1.1.1.1");
    EXPECT_EQ(environment["FTLCONF_dns_listeningMode"].as<std::string>(), "ALL");
    EXPECT_EQ(environment["FTLCONF_misc_etc_dnsmasq_d"].as<std::string>(), "true");
}

TEST(ComposeText, Quotes_every_value_that_yaml_could_take_for_something_else)
{
    const YAML::Node environment = YAML::Load(compose("1", 8090, "UTC"))["services"]["pihole"]["environment"];
    for (const auto &variable : environment)
        EXPECT_EQ(variable.second.Tag(), "!") << variable.first;
}

TEST(ComposeText, An_argument_that_looks_like_a_placeholder_stays_as_it_is)
{
    EXPECT_NE(compose("%2", 8080, "%1").find("image: pihole/pihole:%2\n"), std::string::npos);
    EXPECT_NE(compose("%2", 8080, "%1").find("TZ: \"%1\"\n"), std::string::npos);
}

QString zone(const char *identifier) { return PiholeController::safeTimeZone(QString::fromUtf8(identifier)); }

TEST(SafeTimeZone, Passes_the_identifiers_that_systems_use)
{
    for (const char *identifier : {"Europe/Berlin", "America/Argentina/Buenos_Aires", "Etc/GMT+3", "Etc/GMT-14", "UTC",
                                   "America/Port-au-Prince"}) {
        EXPECT_EQ(zone(identifier), QString::fromUtf8(identifier));
    }
}

TEST(SafeTimeZone, Is_utc_when_any_character_could_mean_something_else)
{
    for (const char *identifier : {"", " ", "Europe/Berlin ", "Europe Berlin", "Europe.Berlin", "a\"b", "a\nb", "a$b",
                                   "a:b", "a\\b", "a%b", "a,b"}) {
        EXPECT_EQ(zone(identifier), QStringLiteral("UTC")) << identifier;
    }
}

TEST(SafeTimeZone, Of_this_computer_is_safe)
{
    const QString own = PiholeController::safeTimeZone();
    EXPECT_FALSE(own.isEmpty());
    EXPECT_EQ(PiholeController::safeTimeZone(own), own);
}

} // namespace
} // namespace corvane::test
