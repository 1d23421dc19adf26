#include "tests/flows/in_state.h"

namespace corvane::test {

namespace {

using std::chrono::milliseconds;

const QString kSystem = QStringLiteral("system");
const char *const kAllFound = "3 of 3 test lookups through the system resolver showed up in Pi-hole's log.";
const char *const kNotFirst = " The first DNS server macOS uses is not Pi-hole.";

/// A Mac that asks its Pi-hole.
class SystemTest : public Protected {
protected:
    SystemTest()
    {
        Mac::ctl(QStringLiteral("pihole log-delay 0"));
        Mac::ctl(QStringLiteral("pihole login-limit 1000")); // these tests log in faster than people
        run(model().refreshStatus(Stats::Leave));
    }
};

} // namespace

TEST_F(SystemTest, Three_lookups_that_arrive_pass)
{
    run(model().runSystemTest());
    EXPECT_TEXT(model().systemTestDetail(), kAllFound);
    EXPECT_EQ(clock.waited(), milliseconds(1500)) << "one look was enough";
    EXPECT_TRUE(passed(model().outcomes(), kSystem));
    ASSERT_TRUE(model().resolverReport());
    EXPECT_TRUE(model().resolverReport()->firstIsPihole);
}

TEST_F(SystemTest, Lookups_that_arrive_do_not_pass_when_another_server_comes_first)
{
    Mac::ctl(QStringLiteral("fault scutil fail"));
    run(model().runSystemTest());
    EXPECT_TEXT(model().systemTestDetail(), std::string(kAllFound) + kNotFirst);
    EXPECT_FALSE(passed(model().outcomes(), kSystem));
}

TEST_F(SystemTest, A_log_that_cannot_be_read_says_why)
{
    model().setAdminPassword(QStringLiteral("not-the-password"));
    const auto before = clock.waited();
    run(model().runSystemTest());
    EXPECT_TEXT(model().systemTestDetail(),
                "0 of 3 test lookups through the system resolver showed up in Pi-hole's log. (Could not read the log: "
                "Pi-hole refused the admin password.)");
    EXPECT_EQ(clock.waited() - before, milliseconds(1500)) << "the polling stops";
}

TEST_F(SystemTest, Why_the_log_cannot_be_read_comes_before_the_wrong_server)
{
    Mac::ctl(QStringLiteral("fault scutil fail"));
    model().setAdminPassword(QStringLiteral("not-the-password"));
    run(model().runSystemTest());
    EXPECT_TEXT(model().systemTestDetail(),
                std::string("0 of 3 test lookups through the system resolver showed up in Pi-hole's log. (Could not "
                            "read the log: Pi-hole refused the admin password.)") +
                    kNotFirst);
}

TEST_F(SystemTest, A_log_that_lags_is_read_again)
{
    Mac::ctl(QStringLiteral("pihole log-delay 60"));
    launch(model().runSystemTest());
    waitFor([this] { return clock.waited() >= milliseconds(3000); }, "the first look found nothing");
    Mac::ctl(QStringLiteral("pihole advance 61"));
    waitFor([this] { return quiet(); }, "the test ends");
    EXPECT_TEXT(model().systemTestDetail(), kAllFound);
    EXPECT_TRUE(passed(model().outcomes(), kSystem));
}

TEST_F(SystemTest, After_three_looks_the_test_gives_up)
{
    Mac::ctl(QStringLiteral("pihole log-delay 600"));
    run(model().runSystemTest());
    EXPECT_TEXT(model().systemTestDetail(),
                "0 of 3 test lookups through the system resolver showed up in Pi-hole's log.");
    EXPECT_EQ(clock.waited(), milliseconds(3 * 1500));
    EXPECT_FALSE(passed(model().outcomes(), kSystem));
}

TEST_F(SystemTest, Lookups_that_go_elsewhere_although_pihole_is_listed_first_are_told_with_where_to_look)
{
    const auto note = [this] { return model().notes().value(kSystem).toString(); };
    run(model().runSystemTest());
    EXPECT_TEXT(note(), "");
    Mac::ctl(QStringLiteral("hidden-dns 1.1.1.1"));
    run(model().runSystemTest());
    EXPECT_FALSE(passed(model().outcomes(), kSystem));
    EXPECT_TRUE(note().startsWith(QStringLiteral("macOS names Pi-hole first, and yet its lookups go elsewhere.")));
    Mac::ctl(QStringLiteral("hidden-dns none"));
    run(model().runSystemTest());
    EXPECT_TEXT(note(), "");
}

TEST_F(SystemTest, A_vpn_in_front_is_told_beside_the_status)
{
    Mac::ctl(QStringLiteral("vpn on 10.8.0.1 split"));
    run(model().refreshStatus(Stats::Leave));
    EXPECT_TEXT(model().statusNote(),
                "A VPN (utun4) has put its own DNS server first, so nothing is asked of Pi-hole "
                "while it is connected. Disconnect it, or switch off its own DNS in its settings.");
    Mac::ctl(QStringLiteral("vpn off"));
    run(model().refreshStatus(Stats::Leave));
    EXPECT_TEXT(model().statusNote(), "");
}

TEST_F(SystemTest, A_second_test_during_a_test_does_nothing)
{
    auto first = model().runSystemTest();
    EXPECT_TRUE(model().busy().contains(kSystem));
    run(model().runSystemTest());
    EXPECT_TEXT(model().systemTestDetail(), "");
    run(std::move(first));
    EXPECT_FALSE(model().systemTestDetail().isEmpty());
    EXPECT_TRUE(quiet());
}

} // namespace corvane::test
