#include "api/pihole_answers.h"
#include "api/pihole_lists.h"
#include "tests/unit/api/recorded.h"

#include <QStringList>

using namespace corvane;
using namespace corvane::test;

namespace {

using Fetch = PiholeList::Fetch;

template <class T>
bool isBadResponse(const std::expected<T, PiholeAPIError> &outcome)
{
    return !outcome && outcome.error() == PiholeAPIError::badResponse();
}

} // namespace

TEST(ListRun, Is_good_only_when_it_printed_its_end)
{
    EXPECT_TRUE(listsWereLoaded("\r\x1b[K  [i] Optimizing\n\n  [\u2713] Done.\n"));
    EXPECT_TRUE(listsWereLoaded(recordedBody("44b-gravity")));
    EXPECT_TRUE(listsWereLoaded(recordedBody("44e-gravity-lists-fail"))) << "lists that fail do not fail the run";
    EXPECT_FALSE(listsWereLoaded("   [\u2717] No DNS resolution available. Please contact support.\n\r"));
    EXPECT_FALSE(listsWereLoaded(""));
}

TEST(Lists, Tell_how_the_last_run_came_by_them)
{
    const auto lists = parseLists(recordedBody("44f-lists-after-failures"));
    ASSERT_TRUE(lists);
    ASSERT_EQ(lists->size(), 10);
    EXPECT_EQ(lists->at(0),
              (PiholeList{1, QStringLiteral("file:///opt/lists/hosts.txt"),
                          QStringLiteral("Migrated from /etc/pihole/adlists.list"), true, Fetch::Unchanged, 21, 0}));
    EXPECT_EQ(lists->at(3).fetch, Fetch::Nothing);
    EXPECT_EQ(lists->at(3).comment, QString());
    EXPECT_EQ(lists->at(5),
              (PiholeList{6, QStringLiteral("http://127.0.0.1:8090/html.txt"), {}, true, Fetch::Fetched, 0, 3}))
        << "a page that is no list";
    EXPECT_EQ(parseLists(recordedBody("44h-lists-cached"))->at(1).fetch, Fetch::OldCopy);
}

TEST(Lists, Of_a_pihole_without_any_are_none)
{
    const auto lists = parseLists(R"({"lists":[]})");
    ASSERT_TRUE(lists);
    EXPECT_TRUE(lists->isEmpty());
}

TEST(Lists, Rubbish_is_an_answer_nobody_understands)
{
    for (const char *body : {"", "[]", "{}", "null", R"({"lists":5})", R"({"lists":[5]})", R"({"lists":[{"id":1}]})",
                             R"({"lists":[{"id":"1","address":"x"}]})", R"({"lists":[{"id":1,"address":null}]})"})
        EXPECT_TRUE(isBadResponse(parseLists(body))) << body;
}

TEST(Lists, An_unknown_state_counts_as_never_fetched)
{
    for (const char *status : {"0", "9", "-1", "\"1\"", "null", "1e300"}) {
        const auto lists = parseLists(R"({"lists":[{"id":1,"address":"x","status":)" + QByteArray(status) + "}]}");
        ASSERT_TRUE(lists) << status;
        EXPECT_EQ(lists->first().fetch, Fetch::Never) << status;
    }
}

TEST(Lists, When_they_were_last_run_stands_in_the_summary)
{
    EXPECT_EQ(parseSummary(recordedBody("47p-summary-day"))->listsRun, 1795288677);
    const auto never = parseSummary(recordedBody("47a-never-summary"));
    ASSERT_TRUE(never);
    EXPECT_EQ(never->listsRun, 0);
    EXPECT_LE(never->domainsBlocked.value_or(1), 0);
    EXPECT_FALSE(parseSummary(R"({"queries":{"total":1,"blocked":1,"percent_blocked":1}})")->listsRun);
}
