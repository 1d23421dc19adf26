#include "dns/dns_configurator.h"
#include "tests/flows/in_state.h"

namespace corvane::test {

namespace {

/// What was said of Pi-hole, and typed for it, before it is removed.
class Forgotten : public Running {
protected:
    Forgotten()
    {
        Mac::ctl(QStringLiteral("pihole login-limit 100"));
        run(model().refreshStatus(Stats::Include));
        run(model().loadServices());
    }

    void removeIt()
    {
        run(model().removePihole());
        ASSERT_TEXT(model().notice(), "Pi-hole was removed.");
    }
};

} // namespace

TEST_F(Forgotten, Is_that_dns_was_changed)
{
    run(model().applyDNS());
    EXPECT_TEXT(model().dnsMessage(), "DNS changed.");
    removeIt();
    EXPECT_TEXT(model().dnsMessage(), "");
}

TEST_F(Forgotten, Is_what_the_checks_saw_of_its_ports)
{
    run(model().runSystemChecks());
    EXPECT_FALSE(model().systemChecks().isEmpty());
    EXPECT_FALSE(model().portReports().isEmpty() && model().systemChecks().isEmpty());
    removeIt();
    EXPECT_TRUE(model().systemChecks().isEmpty());
    EXPECT_TRUE(model().portReports().isEmpty());
}

TEST_F(Forgotten, Is_what_was_asked_and_blocked_in_its_day)
{
    model().showHistory(true);
    waitFor([this] { return model().history() && model().topBlocked(); }, "its day");
    removeIt();
    EXPECT_FALSE(model().history());
    EXPECT_FALSE(model().topBlocked());
}

TEST_F(Forgotten, Is_why_its_day_could_not_be_read)
{
    const QString password = model().adminPassword();
    model().setAdminPassword(QStringLiteral("not-the-password"));
    model().showHistory(true);
    waitFor([this] { return !model().historyProblem().isEmpty(); }, "why not");
    model().setAdminPassword(password);
    removeIt();
    EXPECT_TEXT(model().historyProblem(), "");
}

TEST_F(Forgotten, Is_that_blocking_was_paused)
{
    run(model().pauseBlocking(PauseLength::FiveMinutes));
    EXPECT_FALSE(model().apiMessage().isEmpty());
    removeIt();
    EXPECT_TEXT(model().apiMessage(), "");
    EXPECT_FALSE(model().blocking());
    EXPECT_FALSE(model().summary());
}

TEST_F(Forgotten, Is_the_password_in_its_field)
{
    model().setPasswordInput(model().adminPassword());
    removeIt();
    EXPECT_TEXT(model().passwordInput(), "");
}

TEST_F(Forgotten, Is_why_it_did_not_start)
{
    model().setPasswordInput(QStringLiteral("short"));
    run(model().startPihole());
    EXPECT_FALSE(model().startMessage().isEmpty());
    removeIt();
    EXPECT_TEXT(model().startMessage(), "");
}

TEST_F(Forgotten, Is_every_line_beside)
{
    run(model().loadBlockLists());
    Mac::ctl({QStringLiteral("fault"), QStringLiteral("docker"), QStringLiteral("fail"), QStringLiteral("1"),
              QStringLiteral("something odd"), QStringLiteral("--when"), QStringLiteral("stop *")});
    run(model().stopPihole());
    Mac::ctl(QStringLiteral("fault clear"));
    EXPECT_TRUE(model().notes().contains(QStringLiteral("lists")));
    EXPECT_TRUE(model().notes().contains(QStringLiteral("start")));
    removeIt();
    EXPECT_TRUE(model().notes().isEmpty()) << model().notes().keys().join(u' ').toStdString();
}

TEST_F(Forgotten, Is_what_its_tests_found_out_about_udp)
{
    Mac::ctl(QStringLiteral("forwarder ssh"));
    run(model().runPiholeTests(Wait::No));
    EXPECT_TRUE(model().udpProblem());
    EXPECT_TRUE(model().tcpWorks());
    EXPECT_TRUE(model().grpcFlagSupported());
    removeIt();
    EXPECT_FALSE(model().udpProblem());
    EXPECT_FALSE(model().tcpWorks());
    EXPECT_FALSE(model().grpcFlagSupported());
}

} // namespace corvane::test
