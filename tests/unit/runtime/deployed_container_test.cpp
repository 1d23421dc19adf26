#include "runtime/deployed_container.h"

#include <gtest/gtest.h>

namespace corvane::test {
namespace {

std::optional<DeployedContainer> parsed(const char *text) { return DeployedContainer::parse(QString::fromUtf8(text)); }

DeployedContainer of(const char *tag, int webPort) { return {true, QString::fromUtf8(tag), webPort}; }

TEST(DeployedContainer, Is_read_from_image_and_ports)
{
    EXPECT_EQ(parsed("pihole/pihole:2026.09.0|{\"53/tcp\":[{\"HostIp\":\"127.0.0.1\",\"HostPort\":\"53\"}],"
                     "\"80/tcp\":[{\"HostIp\":\"127.0.0.1\",\"HostPort\":\"8083\"}]}\n"),
              of("2026.09.0", 8083));
}

TEST(DeployedContainer, Of_another_image_has_no_tag)
{
    EXPECT_EQ(parsed("nginx:1|{}"), of("", 0));
    EXPECT_EQ(parsed("somebody/pihole/pihole:1|{}"), of("", 0));
    EXPECT_EQ(parsed("sha256:0123|{\"80/tcp\":[{\"HostIp\":\"\",\"HostPort\":\"80\"}]}"), of("", 80));
}

TEST(DeployedContainer, That_publishes_no_admin_page_has_no_port)
{
    for (const char *ports :
         {"null", "{}", "{\"80/tcp\":null}", "{\"80/tcp\":[]}", "{\"80/tcp\":[{}]}", "{\"80/tcp\":7}",
          "{\"80/tcp\":[{\"HostPort\":8080}]}", "{\"80/tcp\":\"8080\"}", "{\"81/tcp\":[{\"HostPort\":\"8080\"}]}"})
        EXPECT_EQ(parsed((std::string("pihole/pihole:1|") + ports).c_str()), of("1", 0)) << ports;
}

TEST(DeployedContainer, Is_not_read_from_rubbish)
{
    for (const char *text : {"", " ", "|", "|{}", "a", "a|", "a|{", "a|[]", "a|7", "a {}", "a|{} {}", "\xff|\xff"})
        EXPECT_EQ(parsed(text), std::nullopt) << text;
}

} // namespace
} // namespace corvane::test
