#include "checks/port_checker.h"
#include "tests/flows/flow_test.h"
#include "tests/flows/pihole_files.h"
#include "tests/flows/saved_files.h"

#include <QDir>

namespace corvane::test {

namespace {

template <int>
class In : public FlowTest {
protected:
    explicit In(const char *state)
        : FlowTest(QString::fromLatin1(state))
    {}

    void change(int port)
    {
        run(model().changeWebPort(port));
        waitFor([this] { return quiet(); }, "the change ended");
    }
    void expectAllPassed()
    {
        for (const CheckRow &row : model().piholeChecks())
            EXPECT_EQ(row.state, CheckState::Ok) << row.title.toStdString() << ": " << row.detail.toStdString();
        EXPECT_TRUE(model().outcomes().value(QStringLiteral("pihole")).passed);
    }
    bool answersOnItsPort() { return QCoro::waitFor(model().api().webAnswers()); }
    int stored() { return settings.value(QStringLiteral("webPort")).toInt(); }
    void expectPort(int port)
    {
        EXPECT_EQ(model().webPort(), port);
        EXPECT_EQ(stored(), port);
        EXPECT_EQ(PiholeFiles::composePort(), port);
    }
};

class WebPort : public In<0> {
protected:
    WebPort()
        : In("running")
    {}
};

class NewMac : public In<1> {
protected:
    NewMac()
        : In("engine")
    {}
};

} // namespace

TEST_F(WebPort, The_admin_page_moves_to_another_port)
{
    change(8083);
    EXPECT_EQ(model().webPort(), 8083);
    EXPECT_EQ(stored(), 8083);
    EXPECT_TEXT(model().maintOp()->title(), "Recreating Pi-hole on port 8083");
    EXPECT_TRUE(model().maintOp()->succeeded());
    EXPECT_EQ(PiholeFiles::composePort(), 8083);
    EXPECT_TEXT(PiholeFiles::composeTag(), "2026.09.0");
    EXPECT_EQ(PiholeFiles::volumes(), PiholeFiles::bothVolumes());
    EXPECT_TRUE(PiholeFiles::environmentIsWhole(model().adminPassword()));
    EXPECT_TRUE(answersOnItsPort());
    EXPECT_TEXT(model().dashboardURL().toString(), "http://127.0.0.1:8083/admin");
    EXPECT_TEXT(model().notice(), "");
    EXPECT_TRUE(Mac::calls(QStringLiteral("docker")).filter(QStringLiteral("pull")).isEmpty());
    relaunch();
    EXPECT_EQ(model().webPort(), 8083);
    EXPECT_TRUE(answersOnItsPort());
}

TEST_F(WebPort, With_compose_the_project_is_brought_up_again)
{
    Mac::ctl(QStringLiteral("compose on"));
    run(model().refreshTools());
    change(8090);
    EXPECT_TRUE(model().maintOp()->succeeded()) << model().notice().toStdString();
    EXPECT_TRUE(answersOnItsPort());
}

TEST_F(WebPort, The_port_in_force_changes_nothing)
{
    const QByteArray before = contentOf(PiholeFiles::compose());
    change(8080);
    EXPECT_TEXT(model().maintOp()->title(), "");
    EXPECT_EQ(contentOf(PiholeFiles::compose()), before);
    EXPECT_TEXT(model().notice(), "");
}

TEST_F(WebPort, A_port_of_another_program_is_refused_and_nothing_changes)
{
    Mac::ctl(QStringLiteral("take-port 8081 tcp --as nginx"));
    change(8081);
    EXPECT_TEXT(model().notice(), "Port 8081 is already in use.");
    EXPECT_EQ(model().webPort(), 8080);
    EXPECT_EQ(PiholeFiles::composePort(), 8080);
    EXPECT_TEXT(model().maintOp()->title(), "");
    EXPECT_FALSE(PortChecker::freeWebPorts(model().webPort()).contains(8081));

    change(8082);
    EXPECT_TEXT(model().notice(), "") << "the old refusal is gone";
    EXPECT_TRUE(answersOnItsPort());
}

TEST_F(WebPort, A_port_out_of_range_is_refused_and_nothing_changes)
{
    for (const int port : {-1, 0, 79, 443, 8079, 8091, 9000, 65'536, 99'999, 1 << 30}) {
        change(port);
        EXPECT_EQ(model().notice().toStdString(),
                  "Port " + std::to_string(port) + " cannot be used. Pick one from 8080 to 8090.");
        EXPECT_EQ(model().webPort(), 8080);
        EXPECT_EQ(PiholeFiles::composePort(), 8080);
    }
    EXPECT_TRUE(answersOnItsPort());
}

TEST_F(WebPort, A_container_that_is_not_made_again_is_told_and_the_old_port_is_back)
{
    Mac::ctl({QStringLiteral("fault"), QStringLiteral("docker"), QStringLiteral("fail"), QStringLiteral("125"),
              QStringLiteral("no space left on device"), QStringLiteral("--when"), QStringLiteral("run *")});
    model().setWizardFinished(true);
    change(8084);
    EXPECT_TEXT(model().notice(), "Pi-hole was not recreated on port 8084: The Colima disk is full. Free some space "
                                  "(for example 'docker system prune') or recreate Colima with a bigger disk. The web "
                                  "port is 8080 again. There is no container of Pi-hole at the moment. Press Start "
                                  "to get it back.");
    expectPort(8080);
    EXPECT_TRUE(model().containerState().isMissing());
    EXPECT_TEXT(model().wayBack(), "2026.09.0");

    Mac::ctl(QStringLiteral("fault clear"));
    change(8085);
    EXPECT_TEXT(model().notice(), "");
    EXPECT_TRUE(answersOnItsPort());
}

TEST_F(WebPort, An_old_container_that_stays_is_where_the_port_goes_back_to)
{
    Mac::ctl({QStringLiteral("fault"), QStringLiteral("docker"), QStringLiteral("fail"), QStringLiteral("1"),
              QStringLiteral("permission denied"), QStringLiteral("--when"), QStringLiteral("rm *")});
    change(8084);
    expectPort(8080);
    EXPECT_TRUE(answersOnItsPort());
    EXPECT_TEXT(model().wayBack(), "");
}

TEST_F(WebPort, After_a_change_the_container_is_compared_again_though_it_looks_as_before)
{
    run(model().refreshStatus(Stats::Leave));
    run(model().putRight());
    model().setWebPort(8083);
    Mac::ctl({QStringLiteral("fault"), QStringLiteral("docker"), QStringLiteral("fail"), QStringLiteral("1"),
              QStringLiteral("permission denied"), QStringLiteral("--when"), QStringLiteral("rm *")});
    change(8084);
    EXPECT_TEXT(model().notice(), "The web port is 8080 again, where Pi-hole runs.");
    expectPort(8080);
}

TEST_F(WebPort, Files_that_cannot_be_written_leave_port_and_container_as_they_were)
{
    QFile::remove(PiholeFiles::compose());
    QDir().mkpath(PiholeFiles::compose());
    change(8086);
    EXPECT_TRUE(model().notice().startsWith(QStringLiteral("Could not write the new compose file: ")))
        << model().notice().toStdString();
    EXPECT_TEXT(model().maintOp()->title(), "");
    EXPECT_EQ(stored(), 8080);
    EXPECT_EQ(model().webPort(), 8080);
    EXPECT_FALSE(PiholeFiles::containerImage().isEmpty());
    EXPECT_TRUE(answersOnItsPort());
    QDir().rmdir(PiholeFiles::compose());
}

TEST_F(WebPort, Without_docker_nothing_changes_and_the_user_is_told)
{
    Mac::ctl(QStringLiteral("fault docker vanish"));
    change(8087);
    EXPECT_TEXT(model().notice(), "docker was not found.");
    EXPECT_EQ(model().webPort(), 8080);
    EXPECT_EQ(PiholeFiles::composePort(), 8080);
    EXPECT_TEXT(model().maintOp()->title(), "");
}

TEST_F(WebPort, With_the_password_unknown_the_container_moves_with_the_one_that_it_has)
{
    const QString password = model().adminPassword();
    model().setAdminPassword({});
    change(8083);
    EXPECT_TEXT(model().notice(), "");
    expectPort(8083);
    EXPECT_TRUE(PiholeFiles::environmentIsWhole(password));
    EXPECT_TRUE(answersOnItsPort());
}

TEST_F(WebPort, With_the_password_nowhere_nothing_changes_and_the_way_on_is_told)
{
    model().setAdminPassword({});
    QFile::remove(PiholeFiles::environment());
    change(8083);
    EXPECT_TEXT(model().notice(), "The port was not changed: the admin password is neither in your Keychain nor in "
                                  "Pi-hole's file. Set one in step 4 of the wizard first.");
    EXPECT_EQ(model().webPort(), 8080);
    EXPECT_EQ(PiholeFiles::composePort(), 8080);
    EXPECT_TRUE(answersOnItsPort());
}

TEST_F(WebPort, The_port_of_the_own_container_is_not_taken_by_another_program)
{
    model().setWebPort(8085); // as a change that was cut off leaves it
    change(8080);
    EXPECT_TEXT(model().notice(), "");
    expectPort(8080);
    EXPECT_TRUE(answersOnItsPort());
}

TEST_F(WebPort, A_container_without_files_moves_too)
{
    QFile::remove(PiholeFiles::compose());
    change(8083);
    expectPort(8083);
    EXPECT_TRUE(answersOnItsPort());
}

TEST_F(WebPort, A_test_under_way_names_the_port_that_it_asked)
{
    Mac::ctl(QStringLiteral("container health starting"));
    Mac::ctl(QStringLiteral("fault docker late 0.5 --when run*")); // with no container for as long as that
    launch(model().runPiholeTests(Wait::ForStart));
    change(8083);
    waitFor([this] { return quiet(); }, "the test ended");
    EXPECT_TEXT(model().piholeChecks().value(1).title, "Admin page answers on 127.0.0.1:8083");
    expectAllPassed();
}

TEST_F(WebPort, A_test_that_finds_pihole_in_the_middle_of_the_change_begins_anew)
{
    Mac::ctl(QStringLiteral("fault docker late 0.5 --when run*"));
    launch(model().changeWebPort(8083));
    waitFor([] { return Mac::calls(QStringLiteral("docker")).contains(QStringLiteral("rm -f pihole")); }, "it moves");
    launch(model().runPiholeTests(Wait::No));
    waitFor([this] { return quiet(); }, "the test ended");
    expectAllPassed();
}

TEST_F(WebPort, A_look_during_the_change_does_not_call_pihole_missing)
{
    run(model().refreshStatus(Stats::Leave));
    ASSERT_TRUE(model().containerState().isRunning());
    QSet<ContainerState::Kind> seen;
    QObject::connect(&model(), &AppModel::containerStateChanged, &user,
                     [&] { seen += model().containerState().kind(); });
    Mac::ctl(QStringLiteral("fault docker late 0.5 --when run*"));
    launch(model().changeWebPort(8083));
    waitFor([] { return Mac::calls(QStringLiteral("docker")).contains(QStringLiteral("rm -f pihole")); }, "it moves");
    run(model().refreshStatus(Stats::Leave));
    waitFor([this] { return model().answering() && quiet(); }, "the change ended");
    EXPECT_FALSE(seen.contains(ContainerState::Kind::Missing));
}

TEST_F(WebPort, During_another_operation_nothing_changes)
{
    Mac::ctl(QStringLiteral("fault docker late 0.3"));
    launch(model().changeWebPort(8083));
    run(model().changeWebPort(8084));
    EXPECT_TEXT(model().notice(), "") << "a second press of the same";
    waitFor([this] { return quiet(); }, "the change ended");
    EXPECT_EQ(model().webPort(), 8083);
    EXPECT_EQ(PiholeFiles::composePort(), 8083);
}

TEST_F(NewMac, Before_set_up_only_the_setting_changes)
{
    change(8088);
    EXPECT_EQ(model().webPort(), 8088);
    EXPECT_EQ(stored(), 8088);
    EXPECT_FALSE(QFile::exists(PiholeFiles::compose()));
    EXPECT_TEXT(model().maintOp()->title(), "");
    EXPECT_TEXT(model().notice(), "");
}

} // namespace corvane::test
