#include "api/pihole_answers.h"
#include "api/pihole_rules.h"
#include "tests/unit/api/recorded.h"

#include <algorithm>

using namespace corvane;
using namespace corvane::test;

namespace {

PiholeQuery questionFor(const QList<PiholeQuery> &questions, const char *name)
{
    const auto found = std::ranges::find(questions, QLatin1String(name), &PiholeQuery::domain);
    EXPECT_NE(found, questions.end()) << name;
    return found == questions.end() ? PiholeQuery{} : *found;
}

} // namespace

TEST(BlockedQuestions, Say_when_and_by_what_they_were_blocked)
{
    const auto questions = parseQueries(recordedBody("41a-queries-blocked-since"));
    ASSERT_TRUE(questions);
    const PiholeQuery listed = questionFor(*questions, "sub.tracking.example.net");
    EXPECT_EQ(listed.status, QStringLiteral("GRAVITY"));
    EXPECT_EQ(listed.decidedBy, -5);
    EXPECT_EQ(listed.cname, QString());
    EXPECT_NEAR(listed.time, 1795288058.3478, 0.001);
    const PiholeQuery alias = questionFor(*questions, "metrics.example.org");
    EXPECT_EQ(alias.status, QStringLiteral("GRAVITY_CNAME"));
    EXPECT_EQ(alias.cname, QStringLiteral("stats.g.doubleclick.net"));
    EXPECT_EQ(alias.decidedBy, -3);
    EXPECT_EQ(questionFor(*questions, "bad.example.net").decidedBy, 2);
    EXPECT_FALSE(questionFor(*questions, "mask.icloud.com").decidedBy);
}

TEST(BlockedQuestions, That_tell_rubbish_about_the_reason_are_still_questions)
{
    const auto questions =
        parseQueries(R"({"queries":[{"domain":"x","status":"GRAVITY","time":"now","cname":5,"list_id":1e300}]})");
    ASSERT_TRUE(questions);
    EXPECT_EQ(questions->first(), (PiholeQuery{QStringLiteral("x"), QStringLiteral("GRAVITY")}));
}

TEST(PrivacyLevel, Is_a_number)
{
    EXPECT_EQ(parsePrivacyLevel(recordedBody("47n-ftl")), 0);
    EXPECT_EQ(parsePrivacyLevel(R"({"ftl":{"privacy_level":3}})"), 3);
    for (const char *body : {"", "{}", "[]", R"({"ftl":{}})", R"({"ftl":{"privacy_level":"3"}})"})
        EXPECT_FALSE(parsePrivacyLevel(body)) << body;
}

TEST(Rules, Of_names_that_are_allowed_are_read_with_their_comments)
{
    const auto rule = parseRule(recordedBody("45u-allow-get-one"));
    ASSERT_TRUE(rule);
    EXPECT_EQ(*rule, (PiholeRule{PiholeRule::Kind::AllowedName, QStringLiteral("doubleclick.net"),
                                 QStringLiteral("Allowed in Corvane"), true, 3}));
    EXPECT_FALSE(*parseRule(recordedBody("45v-allow-get-missing")));
    const auto all = parseRules(recordedBody("45t-allow-get-all"));
    ASSERT_TRUE(all);
    EXPECT_GT(all->size(), 5);
}

TEST(Rules, A_name_that_was_there_already_is_told_from_one_that_was_added)
{
    EXPECT_EQ(parseRuleAdded(recordedBody("45a-allow-new")), true);
    EXPECT_EQ(parseRuleAdded(recordedBody("45b-allow-duplicate")), false);
    EXPECT_EQ(parseRuleAdded(recordedBody("45c-allow-capitals")), false);
    EXPECT_EQ(parseRuleAdded(recordedBody("50a-deny-regex-nxdomain")), true);
    EXPECT_EQ(parseRuleAdded(recordedBody("50b-deny-regex-again")), false);
}

TEST(Rules, Of_every_kind_have_an_address_of_their_own)
{
    EXPECT_EQ(rulePath(PiholeRule::Kind::AllowedName, QStringLiteral("a.example")),
              "/api/domains/allow/exact/a.example");
    EXPECT_EQ(rulesPath(PiholeRule::Kind::AllowedPattern), "/api/domains/allow/regex");
    EXPECT_EQ(rulesPath(PiholeRule::Kind::DeniedName), "/api/domains/deny/exact");
    EXPECT_EQ(rulePath(PiholeRule::Kind::DeniedPattern, QStringLiteral("^a$")), "/api/domains/deny/regex/%5Ea%24");
}

TEST(Rules, Of_an_unknown_kind_are_left_out)
{
    const auto rules =
        parseRules(R"({"domains":[{"domain":"x","enabled":true,"type":"other","kind":"exact"},)"
                   R"({"domain":"y","enabled":false,"type":"deny","kind":"exact","comment":null,"id":7}]})");
    ASSERT_TRUE(rules);
    EXPECT_EQ(*rules, (QList{PiholeRule{PiholeRule::Kind::DeniedName, QStringLiteral("y"), {}, false, 7}}));
}
