#include "tests/flows/in_state.h"

#include <QSignalSpy>

namespace corvane::test {

namespace {

CheckRow rowOf(const CheckRows &rows, const char *id)
{
    for (const CheckRow &row : rows) {
        if (row.id == QLatin1String(id)) return row;
    }
    ADD_FAILURE() << "no row " << id;
    return {};
}

const PortReport &reportOf(const QList<PortReport> &reports, const char *id)
{
    static const PortReport none;
    for (const PortReport &report : reports) {
        if (report.id == QLatin1String(id)) return report;
    }
    ADD_FAILURE() << "no report " << id;
    return none;
}

#define EXPECT_ROW(row, theState, theDetail)                                                                           \
    EXPECT_EQ((row).state, CheckState::theState);                                                                      \
    EXPECT_TEXT((row).detail, theDetail)

const char *const kBrewNeeded =
    "Not found. It is needed to install Colima and Docker (the wizard never installs Homebrew for you).";

} // namespace

TEST_F(Bare, Every_row_of_a_bare_mac_says_what_is_missing)
{
    Mac::ctl(QStringLiteral("macos 14.5.1"));
    run(model().runSystemChecks());
    const CheckRows rows = model().systemChecks();
    QStringList ids;
    QStringList titles;
    for (const CheckRow &row : rows) {
        ids << row.id;
        titles << row.title;
    }
    EXPECT_TEXT(ids.join(u' '), "cpu os brew docker colima ports");
    EXPECT_TEXT(titles.join(u'|'), "Apple silicon|macOS version|Homebrew|docker|colima|Ports 53 and 8080");
    EXPECT_ROW(rowOf(rows, "cpu"), Ok, "This is an Apple silicon Mac.");
    EXPECT_ROW(rowOf(rows, "os"), Ok, "macOS 14.5 is supported.");
    EXPECT_ROW(rowOf(rows, "brew"), Failed, kBrewNeeded);
    EXPECT_ROW(rowOf(rows, "docker"), Failed, "Not found. Step 3 can install it.");
    EXPECT_ROW(rowOf(rows, "colima"), Failed, "Not found. Step 3 can install it.");
    EXPECT_TRUE(quiet());
}

TEST_F(Bare, An_intel_mac_is_a_warning_and_an_old_system_a_failure)
{
    Mac::ctl(QStringLiteral("arm64 no"));
    Mac::ctl(QStringLiteral("macos 12.7"));
    run(model().runSystemChecks());
    EXPECT_ROW(rowOf(model().systemChecks(), "cpu"), Warning,
               "This looks like an Intel Mac. Pi-hole also has an Intel image, but this wizard was designed for Apple "
               "silicon.");
    EXPECT_ROW(rowOf(model().systemChecks(), "os"), Failed, "macOS 12.7 is too old. macOS 13 or newer is needed.");
    Mac::ctl(QStringLiteral("macos 13.0"));
    run(model().runSystemChecks());
    EXPECT_ROW(rowOf(model().systemChecks(), "os"), Ok, "macOS 13.0 is supported.");
}

TEST_F(Stopped, Tools_are_shown_with_their_paths)
{
    run(model().runSystemChecks());
    EXPECT_ROW(rowOf(model().systemChecks(), "brew"), Ok, "Found.");
    EXPECT_ROW(rowOf(model().systemChecks(), "docker"), Ok, "/opt/homebrew/bin/docker");
    EXPECT_ROW(rowOf(model().systemChecks(), "colima"), Ok, "/opt/homebrew/bin/colima");
    EXPECT_EQ(model().containerState(), ContainerState::dockerDown());
}

TEST_F(Stopped, Homebrew_is_needed_only_while_docker_or_colima_is_missing)
{
    Mac::ctl(QStringLiteral("fault brew vanish"));
    run(model().runSystemChecks());
    EXPECT_ROW(rowOf(model().systemChecks(), "brew"), Warning, "Not found, but you do not need it right now.");
    Mac::ctl(QStringLiteral("fault colima vanish"));
    run(model().runSystemChecks());
    EXPECT_ROW(rowOf(model().systemChecks(), "brew"), Failed, kBrewNeeded);
    EXPECT_ROW(rowOf(model().systemChecks(), "docker"), Ok, "/opt/homebrew/bin/docker");
}

TEST_F(Stopped, A_mac_that_does_not_let_port_53_be_tested_is_a_warning)
{
    run(model().runSystemChecks());
    EXPECT_ROW(rowOf(model().systemChecks(), "ports"), Warning,
               "macOS did not let this app test every port without administrator rights. The real test happens when "
               "Pi-hole starts.");
    EXPECT_EQ(reportOf(model().portReports(), "53u").probe, PortProbe::Denied);
    EXPECT_EQ(reportOf(model().portReports(), "53t").probe, PortProbe::Denied);
    EXPECT_EQ(reportOf(model().portReports(), "web").probe, PortProbe::Free);
    const QStringList asked{QStringLiteral("-nP -iUDP:53"), QStringLiteral("-nP -iTCP:53 -sTCP:LISTEN")};
    EXPECT_EQ(Mac::calls(QStringLiteral("lsof")), asked) << "who holds a port needs no rights to be seen";
}

TEST_F(Stopped, A_mac_that_answers_for_port_53_can_say_that_all_are_free)
{
    Mac::ctl(QStringLiteral("port53 grant"));
    model().setWebPort(8085);
    run(model().runSystemChecks());
    EXPECT_ROW(rowOf(model().systemChecks(), "ports"), Ok, "All free.");
    EXPECT_TEXT(rowOf(model().systemChecks(), "ports").title, "Ports 53 and 8085");
    EXPECT_TEXT(reportOf(model().portReports(), "web").label, "TCP 8085 on 127.0.0.1");
    Mac::ctl(QStringLiteral("port53 deny"));
}

TEST_F(Stopped, Port_53_held_over_udp_alone_names_the_program_that_holds_it)
{
    Mac::ctl(QStringLiteral("port53 grant"));
    Mac::ctl(QStringLiteral("take-port 53 udp --as dnsmasq"));
    run(model().runSystemChecks());
    EXPECT_ROW(rowOf(model().systemChecks(), "ports"), Failed,
               "At least one port is already in use. Details are below.");
    const PortReport udp = reportOf(model().portReports(), "53u");
    EXPECT_EQ(udp.probe, PortProbe::InUse);
    EXPECT_TRUE(udp.holder.startsWith(QStringLiteral("COMMAND"))) << udp.holder.toStdString();
    EXPECT_TRUE(udp.holder.contains(QStringLiteral("dnsmasq"))) << udp.holder.toStdString();
    EXPECT_EQ(reportOf(model().portReports(), "53t").probe, PortProbe::Free);
    EXPECT_TEXT(reportOf(model().portReports(), "53t").holder, "");
    EXPECT_EQ(Mac::calls(QStringLiteral("lsof")), QStringList{QStringLiteral("-nP -iUDP:53")});
    Mac::ctl(QStringLiteral("port53 deny"));
}

TEST_F(Stopped, A_holder_that_nobody_may_see_is_said_to_be_invisible)
{
    Mac::ctl(QStringLiteral("take-port 8080 tcp --as httpd"));
    Mac::ctl(QStringLiteral("fault lsof fail"));
    run(model().runSystemChecks());
    EXPECT_TEXT(reportOf(model().portReports(), "web").holder,
                "No process is visible to this app (it may belong to the system or another user).");
    EXPECT_TRUE(Mac::calls(QStringLiteral("lsof")).contains(QStringLiteral("-nP -iTCP:8080 -sTCP:LISTEN")));
}

TEST_F(Running, The_ports_of_a_running_pihole_are_not_tested)
{
    Mac::ctl(QStringLiteral("container stop"));
    run(model().runSystemChecks());
    EXPECT_EQ(model().portReports().size(), 3);
    EXPECT_EQ(model().containerState(), ContainerState::stopped(QStringLiteral("exited")));

    const QStringList asked = Mac::calls(QStringLiteral("lsof"));
    Mac::ctl(QStringLiteral("container start"));
    run(model().runSystemChecks());
    EXPECT_ROW(rowOf(model().systemChecks(), "ports"), Ok, "Used by the Pi-hole container, as expected.");
    EXPECT_TRUE(model().portReports().isEmpty());
    EXPECT_TRUE(model().containerState().isRunning());
    EXPECT_EQ(Mac::calls(QStringLiteral("lsof")), asked);
}

TEST_F(Running, A_second_check_during_a_check_does_nothing)
{
    QSignalSpy published(&model(), &AppModel::systemChecksChanged);
    auto first = model().runSystemChecks();
    EXPECT_TRUE(model().busy().contains(QStringLiteral("checks")));
    run(model().runSystemChecks());
    EXPECT_EQ(published.count(), 0) << "the second came back at once";
    run(std::move(first));
    EXPECT_EQ(published.count(), 1) << "the whole list at once";
    EXPECT_EQ(Mac::calls(QStringLiteral("docker")).filter(QStringLiteral("inspect")).size(), 1);
    EXPECT_TRUE(quiet());
}

TEST_F(Running, The_old_rows_stay_visible_while_the_checks_run)
{
    run(model().runSystemChecks());
    const CheckRows before = model().systemChecks();
    Mac::ctl(QStringLiteral("container stop"));
    auto again = model().runSystemChecks();
    EXPECT_EQ(model().systemChecks(), before);
    run(std::move(again));
    EXPECT_NE(model().systemChecks(), before);
}

TEST_F(Bare, A_model_that_goes_away_during_the_checks_ends_them_quietly)
{
    Mac::reset(QStringLiteral("running"));
    launch(model().runSystemChecks());
    relaunch();
    EXPECT_TRUE(model().systemChecks().isEmpty());
}

} // namespace corvane::test
