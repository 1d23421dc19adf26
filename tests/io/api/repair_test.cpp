#include "tests/io/api/api_fixture.h"
#include "tests/io/api/stand_in.h"

using namespace corvane;
using namespace corvane::test;
using namespace Qt::StringLiterals;

// What a person does about a site that does not load, at a Pi-hole that plays along.

namespace {

const QString kPassword = QStringLiteral("secret");
constexpr auto kAllowed = PiholeRule::Kind::AllowedName;

std::unique_ptr<PiholeAPI> clientOf(const StandIn &pihole)
{
    auto api = std::make_unique<PiholeAPI>();
    api->configure(pihole.webPort(), kPassword);
    return api;
}

} // namespace

TEST(PiholeRepair, A_blocked_name_is_listed_with_what_blocked_it)
{
    const StandIn pihole(kPassword, {{u"log_delay"_s, 0}});
    const auto api = clientOf(pihole);
    EXPECT_NE(pihole.lookUp(u"example.com"_s), QString());
    EXPECT_EQ(pihole.lookUp(u"doubleclick.net"_s), u"0.0.0.0"_s);
    const auto blocked = QCoro::waitFor(api->blockedSince(0, 10));
    ASSERT_TRUE(blocked);
    ASSERT_EQ(blocked->size(), 1);
    EXPECT_EQ(blocked->first().domain, u"doubleclick.net"_s);
    const auto lists = QCoro::waitFor(api->lists());
    ASSERT_TRUE(lists);
    EXPECT_EQ(blocked->first().decidedBy, -lists->first().id - 2);
    EXPECT_EQ(QCoro::waitFor(api->blockedSince(blocked->first().time + 1, 10))->size(), 0);
}

TEST(PiholeRepair, An_allowed_name_answers_until_it_is_taken_back)
{
    const StandIn pihole(kPassword, {{u"effect"_s, 0}});
    const auto api = clientOf(pihole);
    const PiholeRule rule{kAllowed, u"doubleclick.net"_s, u"Allowed for a test"_s};
    EXPECT_EQ(QCoro::waitFor(api->addRule(rule)), true);
    EXPECT_NE(pihole.lookUp(u"doubleclick.net"_s), u"0.0.0.0"_s);
    EXPECT_EQ(QCoro::waitFor(api->addRule(rule)), false) << "it is there already";
    const PiholeRule renamed{kAllowed, rule.domain, u"Allowed otherwise"_s};
    EXPECT_TRUE(QCoro::waitFor(api->replaceRule(renamed)));
    const auto stored = QCoro::waitFor(api->rule(kAllowed, rule.domain));
    ASSERT_TRUE(stored && *stored);
    EXPECT_EQ((*stored)->comment, renamed.comment);
    EXPECT_TRUE((*stored)->enabled);
    EXPECT_TRUE(QCoro::waitFor(api->removeRule(kAllowed, rule.domain)));
    EXPECT_EQ(pihole.lookUp(u"doubleclick.net"_s), u"0.0.0.0"_s);
    EXPECT_TRUE(QCoro::waitFor(api->removeRule(kAllowed, rule.domain))) << "it has gone already";
}

TEST(PiholeRepair, A_name_that_is_blocked_behind_another_says_so)
{
    const StandIn pihole(kPassword, {{u"log_delay"_s, 0}, {u"privacy"_s, 0}});
    const auto api = clientOf(pihole);
    EXPECT_EQ(QCoro::waitFor(api->privacyLevel()), 0);
    EXPECT_EQ(pihole.lookUp(u"metrics.example.org"_s), u"0.0.0.0"_s);
    const auto newest = QCoro::waitFor(api->newestQuestion(u"metrics.example.org"_s));
    ASSERT_TRUE(newest);
    ASSERT_EQ(newest->size(), 1);
    EXPECT_EQ(newest->first().status, u"GRAVITY_CNAME"_s);
    EXPECT_EQ(newest->first().cname, u"stats.g.doubleclick.net"_s);
}

TEST(PiholeRepair, A_run_prints_what_it_does)
{
    const StandIn pihole(kPassword, {{u"pace"_s, 0.1}});
    const auto api = clientOf(pihole);
    QByteArray heard;
    const std::function<void(const QByteArray &)> hear = [&heard](const QByteArray &piece) { heard += piece; };
    EXPECT_EQ(QCoro::waitFor(api->updateLists(hear)), true);
    EXPECT_TRUE(heard.contains("Target: https://")) << heard.constData();
    EXPECT_TRUE(heard.endsWith("Done.\n"));
    EXPECT_GT(QCoro::waitFor(api->summary())->listsRun.value_or(0), 0);
}
