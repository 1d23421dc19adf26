// What stands in whole texts, where no constant reaches, is what the constants say.

#include "facts/addresses.h"
#include "facts/container_name.h"
#include "facts/web_ports.h"
#include "runtime/docker_cli.h"
#include "runtime/pihole_controller.h"
#include "runtime/tool_failures.h"

#include <gtest/gtest.h>

namespace corvane::test {

using namespace Qt::Literals::StringLiterals;

namespace {

QString composed() { return PiholeController::composeText(u"2026.09.0"_s, WebPorts::kDefault, u"UTC"_s); }

QString otherPorts() { return u"(%1 to %2)"_s.arg(WebPorts::kFirstOther).arg(WebPorts::kLast); }

} // namespace

TEST(ComposeText, Names_the_container_and_its_volumes_as_the_commands_do)
{
    EXPECT_TRUE(composed().contains(u"container_name: "_s + kContainerName + u'\n'));
    EXPECT_TRUE(composed().contains(u"- "_s + kSettingsVolume + u":/etc/pihole\n"_s));
    EXPECT_TRUE(composed().contains(u"- "_s + kDnsmasqVolume + u":/etc/dnsmasq.d\n"_s));
    EXPECT_TRUE(composed().contains(u"    name: "_s + kSettingsVolume + u'\n'));
    EXPECT_TRUE(composed().contains(u"    name: "_s + kDnsmasqVolume + u'\n'));
}

TEST(ComposeText, Publishes_every_port_where_pihole_is_asked)
{
    EXPECT_EQ(composed().count(u"\"%1:"_s.arg(kPiholeAddress)), 3);
    EXPECT_EQ(composed().count(u"      - \""_s), 3) << "and no other";
}

TEST(SentencesAboutATakenPort, Offer_the_web_ports_that_there_are)
{
    EXPECT_TRUE(QString(DockerCLI::kPortInUse).contains(otherPorts()));
    const QString allocated = u"Bind for 127.0.0.1:8080 failed: port is already allocated"_s;
    EXPECT_TRUE(ToolFailures::docker({allocated}).sentence.contains(otherPorts()));
    const QString inUse = u"listen tcp4 127.0.0.1:8080: bind: address already in use"_s;
    EXPECT_TRUE(ToolFailures::docker({inUse}).sentence.contains(otherPorts()));
}

} // namespace corvane::test
