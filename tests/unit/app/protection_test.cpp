#include "app/protection.h"

#include <gtest/gtest.h>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

ResolverReport servers(const QStringList &servers) { return {servers, servers.first() == u"127.0.0.1"_s, {}}; }

} // namespace

TEST(Protection, Holds_while_pihole_answers_this_mac_and_blocks)
{
    EXPECT_EQ(protectionNow({.icon = MenuIcon::Active, .blocking = PiholeBlocking{true, {}}}), Protection::Protected);
    EXPECT_EQ(protectionNow({.icon = MenuIcon::Active}), Protection::Protected) << "the counters come a moment later";
}

TEST(Protection, Is_none_while_pihole_lets_everything_through)
{
    EXPECT_EQ(protectionNow({.icon = MenuIcon::Active, .blocking = PiholeBlocking{false, 20}}),
              Protection::NotBlocking);
    EXPECT_EQ(protectionNow({.icon = MenuIcon::Active, .blocking = PiholeBlocking{false, {}}}),
              Protection::NotBlocking);
    EXPECT_EQ(protectionNow({.icon = MenuIcon::Active, .listsEmpty = true}), Protection::NotBlocking);
}

TEST(Protection, Rests_with_the_backup_when_pihole_is_silent_and_another_server_is_listed)
{
    EXPECT_EQ(protectionNow({.icon = MenuIcon::NotAnswering, .resolvers = servers({u"127.0.0.1"_s, u"1.1.1.1"_s})}),
              Protection::Backup);
    EXPECT_EQ(protectionNow({.icon = MenuIcon::NotAnswering, .resolvers = servers({u"127.0.0.1"_s})}),
              Protection::Down);
    EXPECT_EQ(protectionNow({.icon = MenuIcon::NotAnswering}), Protection::Down);
}

TEST(Protection, Is_not_used_when_the_mac_asks_others)
{
    EXPECT_EQ(protectionNow({.icon = MenuIcon::NotUsed}), Protection::NotUsed);
    EXPECT_EQ(protectionNow({.icon = MenuIcon::Stopped}), Protection::NotUsed);
    EXPECT_EQ(protectionNow({}), Protection::Unknown);
}
