#include "api/pihole_rules.h"
#include "tests/io/api/api_fixture.h"

using namespace corvane;
using namespace corvane::test;

namespace {

const QString kExpression = QStringLiteral("^chrome\\.cloudflare-dns\\.com$;reply=NXDOMAIN");
const auto kKind = PiholeRule::Kind::DeniedPattern;
const PiholeRule kRule{kKind, kExpression, QStringLiteral("Corvane: a test"), true, 1};
const QByteArray kPath = "/api/domains/deny/regex/%5Echrome%5C.cloudflare-dns%5C.com%24%3Breply%3DNXDOMAIN";

const char *const kStored =
    R"("domains":[{"domain":"^chrome\\.cloudflare-dns\\.com$;reply=NXDOMAIN","unicode":"^chrome\\.cloudflare-dns)"
    R"(\\.com$;reply=NXDOMAIN","type":"deny","kind":"regex","comment":"Corvane: a test","groups":[0],"enabled":true,)"
    R"("id":1,"date_added":1795290203,"date_modified":1795290203}])";
const char *const kTaken =
    R"("processed":{"errors":[],"success":[{"item":"^chrome\\.cloudflare-dns\\.com$;reply=NXDOMAIN"}]})";
const char *const kThere =
    R"("processed":{"errors":[{"item":"^chrome\\.cloudflare-dns\\.com$;reply=NXDOMAIN","error":"UNIQUE constraint )"
    R"(failed: domainlist.domain, domainlist.type"}],"success":[]})";

QByteArray object(std::initializer_list<const char *> members)
{
    QByteArrayList parts;
    for (const char *member : members)
        parts += member;
    return "{" + parts.join(',') + "}";
}

QByteArray lastBody(const ScriptedServer &server) { return server.requests().last().body; }

} // namespace

TEST(PiholeRules, A_rule_is_sent_with_its_comment)
{
    ScriptedServer server(afterLogin(answer(201, object({kStored, kTaken}))));
    Client client(server);
    const auto added = QCoro::waitFor(client.api.addRule(kRule));
    ASSERT_TRUE(added);
    EXPECT_TRUE(*added);
    EXPECT_EQ(server.requests().last().verb, "POST");
    EXPECT_EQ(server.requests().last().target, "/api/domains/deny/regex");
    EXPECT_EQ(lastBody(server), R"({"comment":"Corvane: a test","domain":"^chrome\\.cloudflare-dns\\.com$;)"
                                R"(reply=NXDOMAIN","enabled":true})");
}

TEST(PiholeRules, A_rule_that_is_there_already_is_told_from_one_that_was_added)
{
    ScriptedServer server(afterLogin(answer(201, object({kStored, kThere}))));
    Client client(server);
    const auto added = QCoro::waitFor(client.api.addRule(kRule));
    ASSERT_TRUE(added);
    EXPECT_FALSE(*added);
}

TEST(PiholeRules, A_rule_is_read_by_its_expression)
{
    ScriptedServer server(afterLogin(answer(200, object({kStored}))));
    Client client(server);
    const auto rule = QCoro::waitFor(client.api.rule(kKind, kExpression));
    ASSERT_TRUE(rule);
    EXPECT_EQ(*rule, kRule);
    EXPECT_EQ(server.requests().last().target, kPath);
}

TEST(PiholeRules, A_missing_rule_is_read_as_none)
{
    ScriptedServer server(afterLogin(answer(200, R"({"domains":[],"took":0.1})")));
    Client client(server);
    const auto rule = QCoro::waitFor(client.api.rule(kKind, kExpression));
    ASSERT_TRUE(rule);
    EXPECT_FALSE(*rule);
}

TEST(PiholeRules, A_rule_is_taken_away_by_its_expression)
{
    ScriptedServer server(afterLogin(answer(204, {})));
    Client client(server);
    EXPECT_TRUE(QCoro::waitFor(client.api.removeRule(kKind, kExpression)));
    EXPECT_EQ(server.requests().last().verb, "DELETE");
    EXPECT_EQ(server.requests().last().target, kPath);
}

TEST(PiholeRules, A_rule_that_has_gone_counts_as_taken_away)
{
    ScriptedServer server(afterLogin(answer(404, R"({"took":0.1})")));
    Client client(server);
    EXPECT_TRUE(QCoro::waitFor(client.api.removeRule(kKind, kExpression)));
}

TEST(PiholeRules, A_refusal_ends_in_its_status)
{
    ScriptedServer server(afterLogin(answer(400, R"({"error":{"key":"regex_error"}})")));
    Client client(server);
    const auto added = QCoro::waitFor(client.api.addRule(kRule));
    ASSERT_FALSE(added);
    EXPECT_EQ(added.error(), PiholeAPIError::http(400));
}

TEST(PiholeRules, Rubbish_is_an_answer_nobody_understands)
{
    for (const char *body :
         {"", "[]", "{}", R"({"domains":5})", R"({"domains":[5]})", R"({"domains":[{"domain":"x"}]})"})
        EXPECT_EQ(errorOf(parseRule(body)), PiholeAPIError::badResponse()) << body;
    for (const char *body : {"", "[]", "{}", R"({"processed":[]})", R"({"processed":{"errors":[],"success":[]}})",
                             R"({"processed":{"errors":[{"error":"database is locked"}],"success":[]}})"})
        EXPECT_EQ(errorOf(parseRuleAdded(body)), PiholeAPIError::badResponse()) << body;
}

TEST(PiholeRules, An_allowed_name_has_an_address_of_its_own)
{
    ScriptedServer server(afterLogin(answer(200, object({kStored, kTaken}))));
    Client client(server);
    const PiholeRule rule{PiholeRule::Kind::AllowedName, QStringLiteral("cdn.example.com"), QStringLiteral("why")};
    EXPECT_TRUE(QCoro::waitFor(client.api.addRule(rule)));
    EXPECT_EQ(server.requests().last().target, "/api/domains/allow/exact");
    EXPECT_TRUE(QCoro::waitFor(client.api.replaceRule(rule)));
    EXPECT_EQ(server.requests().last().verb, "PUT");
    EXPECT_EQ(server.requests().last().target, "/api/domains/allow/exact/cdn.example.com");
    EXPECT_EQ(lastBody(server), R"({"comment":"why","domain":"cdn.example.com","enabled":true})");
}

TEST(PiholeRules, A_refused_change_is_no_change)
{
    ScriptedServer server(afterLogin(answer(400, R"({"error":{"key":"bad_request"}})")));
    Client client(server);
    const PiholeRule rule{PiholeRule::Kind::AllowedName, QStringLiteral("a b")};
    EXPECT_EQ(errorOf(QCoro::waitFor(client.api.replaceRule(rule))), PiholeAPIError::http(400));
}

TEST(PiholeRules, All_rules_are_read_with_one_call)
{
    ScriptedServer server(afterLogin(answer(200, object({kStored}))));
    Client client(server);
    const auto rules = QCoro::waitFor(client.api.rules());
    ASSERT_TRUE(rules);
    EXPECT_EQ(*rules, QList<PiholeRule>{kRule});
    EXPECT_EQ(server.requests().last().target, "/api/domains");
}
