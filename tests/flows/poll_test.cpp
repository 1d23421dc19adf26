#include "tests/flows/in_state.h"

namespace corvane::test {

namespace {

/// How often the poll asked Pi-hole for its counters, told by how often they changed.
class Counted : public QObject {
public:
    explicit Counted(AppModel &model)
    {
        // Each pass asks a question of its own, so that two readings are never the same.
        connect(&model, &AppModel::summaryChanged, this, [this] { ++m_times; });
    }
    [[nodiscard]] int times() const { return m_times; }

private:
    int m_times = 0;
};

} // namespace

TEST_F(Running, The_poll_reads_the_counters_at_its_first_pass_and_every_second_one)
{
    const Counted counted(model());
    QList<int> timesAtPass;
    launch(model().bootstrap());
    for (int pass = 0; pass < 5; ++pass) {
        waitFor([this, pass] { return clock.waited() >= std::chrono::seconds(15) * (pass + 1); }, "the pass is over");
        timesAtPass.append(counted.times());
    }
    EXPECT_EQ(timesAtPass, (QList<int>{1, 1, 2, 2, 3}));
}

TEST_F(Homebrew, What_the_user_installs_in_the_terminal_is_found_by_the_next_look)
{
    Mac::ctl(QStringLiteral("fault brew vanish"));
    launch(model().bootstrap());
    waitFor([this] { return clock.waited() >= std::chrono::seconds(30); }, "two looks");
    EXPECT_FALSE(model().hasBrew());
    Mac::ctl(QStringLiteral("fault clear"));
    waitFor([this] { return model().hasBrew(); }, "Homebrew to be found");
    EXPECT_FALSE(model().hasColima());
}

TEST_F(Running, The_poll_looks_for_no_tool_while_all_are_there)
{
    const auto searches = [] { return Mac::calls(QStringLiteral("docker")).count(QStringLiteral("compose version")); };
    const auto before = searches();
    launch(model().bootstrap());
    waitFor([this] { return clock.waited() >= std::chrono::seconds(45); }, "three looks");
    EXPECT_EQ(searches() - before, 1) << "at the start";
}

TEST_F(Protected, The_dot_stays_gray_until_the_resolvers_were_read)
{
    Mac::ctl(QStringLiteral("fault scutil late 0.5"));
    auto first = model().refreshStatus(Stats::Leave);
    waitFor([this] { return model().containerState().isRunning(); }, "the container was read");
    EXPECT_FALSE(model().statusChecked());
    EXPECT_EQ(model().icon(), MenuIcon::Unknown);
    run(std::move(first));
    EXPECT_EQ(model().icon(), MenuIcon::Active);
}

TEST_F(Protected, No_colour_shows_that_never_was)
{
    run(model().refreshStatus(Stats::Leave));
    QList<MenuIcon> icons;
    QObject::connect(&model(), &AppModel::iconChanged, &model(), [this, &icons] { icons.append(model().icon()); });
    Mac::ctl(QStringLiteral("container stop"));
    Mac::ctl(QStringLiteral("vpn on 10.8.0.1"));
    run(model().refreshStatus(Stats::Leave));
    EXPECT_EQ(icons, QList<MenuIcon>{MenuIcon::Stopped}) << "never red: the Mac did not use Pi-hole any more";
}

TEST_F(Running, A_container_that_takes_its_time_to_stop_is_waited_for)
{
    // Docker itself gives a container ten seconds before it kills it.
    Mac::ctl(QStringList{QStringLiteral("fault"), QStringLiteral("docker"), QStringLiteral("late"),
                         QStringLiteral("12"), QStringLiteral("--when"), QStringLiteral("stop *")});
    run(model().refreshStatus(Stats::Leave));
    run(model().stopPihole());
    EXPECT_TEXT(model().startMessage(), "");
    EXPECT_EQ(model().containerState().kind(), ContainerState::Kind::Stopped);
}

} // namespace corvane::test
