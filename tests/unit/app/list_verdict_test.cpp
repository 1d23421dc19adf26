#include "app/list_run.h"
#include "app/list_verdict.h"

#include <gtest/gtest.h>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

using Fetch = PiholeList::Fetch;

PiholeList list(Fetch fetch, qint64 names, qint64 otherLines = 0)
{
    return {1, u"https://lists.example/a.txt"_s, {}, true, fetch, names, otherLines};
}

std::string troubles(const PiholeList &before, const PiholeList &after)
{
    return listTroubles({before}, {after}).toStdString();
}

} // namespace

TEST(ListTroubles, Are_none_when_every_list_came)
{
    for (const Fetch fetch : {Fetch::Fetched, Fetch::Unchanged})
        EXPECT_EQ(troubles(list(Fetch::Fetched, 5), list(fetch, 5)), "");
    EXPECT_EQ(listTroubles({}, {}), QString());
}

TEST(ListTroubles, Name_the_list_that_failed)
{
    EXPECT_EQ(troubles(list(Fetch::Fetched, 5), list(Fetch::OldCopy, 5)),
              "lists.example/a.txt could not be fetched. Its old copy stays in use.");
    EXPECT_EQ(troubles(list(Fetch::Never, 0), list(Fetch::Nothing, 0)),
              "lists.example/a.txt could not be fetched, and there is no old copy of it.");
}

TEST(ListTroubles, Name_the_list_that_a_page_has_replaced_by_nothing)
{
    const std::string page = "lists.example/a.txt holds no name any more. A log-in page of the network may have "
                             "answered in its place: log in there, then refresh the lists again.";
    EXPECT_EQ(troubles(list(Fetch::Fetched, 5), list(Fetch::Fetched, 0, 3)), page);
    EXPECT_EQ(troubles(list(Fetch::Never, 0), list(Fetch::Fetched, 0, 3)), page);
    EXPECT_EQ(troubles(list(Fetch::Fetched, 5), list(Fetch::Fetched, 0)), page);
}

TEST(ListTroubles, Leave_out_lists_that_are_switched_off)
{
    PiholeList off = list(Fetch::Nothing, 0);
    off.enabled = false;
    EXPECT_EQ(troubles(list(Fetch::Fetched, 5), off), "");
}

TEST(ListTroubles, Are_summed_up_when_they_are_many)
{
    QList<PiholeList> many;
    for (int id = 1; id <= 8; ++id)
        many.append({id, QStringLiteral("http://l%1.example/x").arg(id), {}, true, Fetch::OldCopy, 5});
    const QString told = listTroubles({}, many);
    EXPECT_EQ(told.count(u'\n'), 5);
    EXPECT_TRUE(told.endsWith(u"And 3 more."_s)) << told.toStdString();
}

TEST(ListRun, Says_which_list_is_being_fetched)
{
    ListRun run;
    EXPECT_FALSE(run.printed());
    run.begin(2);
    EXPECT_TRUE(run.printed());
    run.hear("  [i] Target: https://lists.exa");
    run.hear("mple/a.txt\n  [i] Status: Pending...\r\x1b[K  [\xe2\x9c\x93] Status: Retrieval successful\n\n");
    EXPECT_EQ(run.progress(), u"List 1 of 2: lists.example/a.txt"_s);
    run.hear("  [i] Target: https://lists.example/b.txt\n");
    EXPECT_EQ(run.progress(), u"List 2 of 2: lists.example/b.txt"_s);
    run.hear("  [i] Target: https://lists.example/c.txt\n");
    EXPECT_EQ(run.progress(), u"List 3: lists.example/c.txt"_s) << "one more than anybody knew of";
    run.end();
    EXPECT_EQ(run.progress(), QString());
    EXPECT_EQ(run.log()->lines().size(), 5);
    EXPECT_EQ(run.log()->lines().at(2), u"  [\u2713] Status: Retrieval successful"_s);
}

TEST(ListRun, Begins_with_an_empty_log)
{
    ListRun run;
    run.begin(1);
    run.hear("one\n");
    run.end();
    run.begin(1);
    EXPECT_TRUE(run.log()->lines().isEmpty());
}
