#include "tests/faults/user_actions.h"
#include "ui/commands.h"

#include <QMetaMethod>

namespace corvane::test {

namespace {

QSet<QString> offered()
{
    QSet<QString> names;
    const QMetaObject &commands = Commands::staticMetaObject;
    for (int i = commands.methodOffset(); i < commands.methodCount(); ++i) {
        if (commands.method(i).methodType() == QMetaMethod::Method)
            names += QString::fromLatin1(commands.method(i).name());
    }
    return names;
}

QSet<QString> swept()
{
    QSet<QString> names;
    for (const UserAction &action : userActions())
        names += QString::fromLatin1(action.name);
    return names;
}

std::string sorted(const QSet<QString> &names)
{
    QStringList list(names.begin(), names.end());
    list.sort();
    return list.join(u' ').toStdString();
}

} // namespace

TEST(SweptActions, Are_all_that_a_view_offers_except_what_only_shows_something)
{
    const QStringList listed = commandsThatOnlyShow();
    const QSet<QString> shown(listed.begin(), listed.end());
    ASSERT_GT(offered().size(), 50);
    EXPECT_EQ(sorted(offered() - swept() - shown), "") << "these are in no sweep: see user_actions.cpp";
    EXPECT_EQ(sorted((swept() + shown) - offered()), "") << "no view offers these any more";
    EXPECT_EQ(sorted(swept() & shown), "");
}

TEST(SweptActions, Begin_every_activity_but_those_that_are_parts_of_others)
{
    Activities begun = Activity::PutRight | Activity::Exchange;
    for (const UserAction &action : userActions()) {
        if (action.activity) begun |= *action.activity;
    }
    for (const ActivityRule &rule : kActivityRules)
        EXPECT_TRUE(begun.contains(rule.activity)) << rule.words;
}

} // namespace corvane::test
