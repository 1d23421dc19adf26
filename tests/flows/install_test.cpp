#include "tests/flows/in_state.h"

#include <QJsonDocument>

namespace corvane::test {

namespace {

const QString kStart = QStringLiteral("start --cpu 2 --memory 2 --disk 10");

QString opened() { return QString::fromUtf8(QJsonDocument(Mac::ctl(QStringLiteral("opened")).toArray()).toJson()); }

} // namespace

TEST_F(Bare, Without_homebrew_its_page_opens_and_nothing_runs)
{
    model().installColimaAndDocker();
    waitFor([] { return !Mac::ctl(QStringLiteral("opened")).toArray().isEmpty(); }, "a page was opened");
    EXPECT_TRUE(opened().contains(QStringLiteral("https://brew.sh"))) << opened().toStdString();
    EXPECT_FALSE(model().operationRunning());
    EXPECT_TRUE(Mac::calls(QStringLiteral("brew")).isEmpty());
}

TEST_F(Homebrew, Installing_brings_the_tools_the_engine_and_the_start_at_login)
{
    model().installColimaAndDocker();
    EXPECT_TEXT(model().installOp()->title(), "Installing Colima and Docker");
    waitFor([this] { return model().installOp()->title() == QStringLiteral("Turning on Colima at login"); },
            "the start at login is set up");
    waitForOperation(model().installOp());
    waitFor([this] { return model().dockerWorks(); }, "Docker is back");
    EXPECT_TRUE(model().hasColima());
    EXPECT_TRUE(model().hasDocker());
    EXPECT_EQ(Mac::calls(QStringLiteral("brew")),
              (QStringList{QStringLiteral("install colima docker"), QStringLiteral("services start colima")}));
    EXPECT_EQ(Mac::calls(QStringLiteral("colima")).first(), kStart);
    EXPECT_EQ(Mac::calls(QStringLiteral("colima")).value(1), QStringLiteral("stop"));
}

TEST_F(Homebrew, What_was_missing_at_the_check_is_found_after_the_installation)
{
    run(model().runSystemChecks());
    EXPECT_FALSE(model().isStepDone(1));
    model().installColimaAndDocker();
    waitForOperation(model().installOp());
    waitFor([this] { return model().isStepDone(1); }, "the Mac was checked again");
}

TEST_F(Homebrew, Without_the_wish_for_it_nothing_is_started_at_login)
{
    model().setAutostartColima(false);
    model().installColimaAndDocker();
    waitForOperation(model().installOp());
    waitFor([this] { return model().dockerWorks(); }, "Docker works");
    EXPECT_TEXT(model().installOp()->title(), "Installing Colima and Docker");
    EXPECT_TRUE(model().installOp()->succeeded());
    EXPECT_EQ(Mac::calls(QStringLiteral("brew")).size(), 1);
}

TEST_F(Homebrew, An_installation_that_fails_says_so_and_sets_nothing_up_at_login)
{
    Mac::ctl(QStringList{QStringLiteral("colima"), QStringLiteral("fail"), QStringLiteral("error starting vm")});
    model().installColimaAndDocker();
    waitForOperation(model().installOp());
    waitFor([this] { return model().hasColima(); }, "the tools are looked up again, success or not");
    EXPECT_FALSE(model().installOp()->succeeded());
    EXPECT_TEXT(model().installOp()->failureText(), "Docker reported an error. Open 'Show details' to read it.");
    EXPECT_TRUE(model().installOp()->lines().contains(QStringLiteral("Command ended with status 1.")));
    EXPECT_FALSE(model().dockerWorks());
    EXPECT_EQ(Mac::calls(QStringLiteral("brew")).size(), 1);
}

TEST_F(Homebrew, A_second_press_while_the_installation_runs_does_nothing)
{
    Mac::ctl(QStringLiteral("fault brew late 0.3 --at 1"));
    model().setAutostartColima(false);
    model().installColimaAndDocker();
    model().installColimaAndDocker();
    model().startColimaOnly();
    model().applyAutostart(true);
    waitForOperation(model().installOp());
    EXPECT_TEXT(model().installOp()->title(), "Installing Colima and Docker");
    EXPECT_EQ(Mac::calls(QStringLiteral("brew")).size(), 1);
    EXPECT_EQ(Mac::calls(QStringLiteral("colima")).size(), 1);
}

TEST_F(Homebrew, A_homebrew_that_has_gone_meanwhile_is_named)
{
    Mac::ctl(QStringLiteral("fault brew vanish"));
    model().installColimaAndDocker();
    EXPECT_TEXT(model().notice(), "Homebrew was not found.");
    EXPECT_FALSE(model().operationRunning());
}

TEST_F(Stopped, Starting_colima_alone_brings_docker_up)
{
    model().startColimaOnly();
    EXPECT_TEXT(model().installOp()->title(), "Starting Colima");
    waitForOperation(model().installOp());
    EXPECT_TEXT(model().installOp()->lines().first(), "> colima start");
    EXPECT_EQ(Mac::calls(QStringLiteral("colima")), QStringList{kStart});
    waitFor([this] { return model().dockerWorks(); }, "Docker works");
}

TEST_F(Homebrew, Starting_a_colima_that_is_not_there_says_so)
{
    model().startColimaOnly();
    EXPECT_TEXT(model().notice(), "Colima was not found.");
    EXPECT_FALSE(model().operationRunning());
    EXPECT_FALSE(model().installOp()->ended());
}

TEST_F(Stopped, The_docker_test_tells_whether_docker_answers)
{
    auto test = model().testDocker();
    EXPECT_TRUE(model().busy().contains(QStringLiteral("docker")));
    run(std::move(test));
    EXPECT_FALSE(passed(model().outcomes(), QStringLiteral("docker")));
    EXPECT_TEXT(model().outcomes().value(QStringLiteral("docker")).summary, "docker info failed");

    Mac::ctl(QStringLiteral("engine start"));
    run(model().testDocker());
    EXPECT_TRUE(passed(model().outcomes(), QStringLiteral("docker")));
    EXPECT_TEXT(model().outcomes().value(QStringLiteral("docker")).summary, "docker info works");
    EXPECT_LT(model().outcomes().value(QStringLiteral("docker")).date.msecsTo(QDateTime::currentDateTime()), 60'000);
    EXPECT_TRUE(quiet());
}

TEST_F(Stopped, With_colima_off_the_start_at_login_asks_nothing_and_runs_one_command)
{
    run(model().changeAutostart(true));
    EXPECT_TEXT(model().installOp()->title(), "Turning on Colima at login");
    waitForOperation(model().installOp());
    EXPECT_TRUE(user.alerts().isEmpty());
    EXPECT_EQ(Mac::calls(QStringLiteral("brew")), QStringList{QStringLiteral("services start colima")});
    EXPECT_FALSE(Mac::calls(QStringLiteral("colima")).contains(QStringLiteral("stop")));
    waitFor([this] { return model().dockerWorks(); }, "Docker comes up");
}

TEST_F(Running, Turning_the_start_at_login_on_asks_first_and_stops_colima_once)
{
    model().setAutostartColima(false);
    run(model().changeAutostart(true));
    ASSERT_EQ(user.alerts().size(), 1);
    const Alert alert = user.alerts().first();
    EXPECT_TEXT(alert.title, "Start Colima at login?");
    EXPECT_TEXT(alert.text, "Colima will be stopped once and then started by Homebrew's login service. Pi-hole is "
                            "unavailable for a short moment.");
    EXPECT_TEXT(alert.accept, "Continue");
    EXPECT_TEXT(alert.reject, "Cancel");
    EXPECT_EQ(alert.style, Alert::Style::Informational);
    waitForOperation(model().installOp());
    EXPECT_EQ(Mac::calls(QStringLiteral("colima")).first(), QStringLiteral("stop"));
    EXPECT_EQ(Mac::calls(QStringLiteral("brew")), QStringList{QStringLiteral("services start colima")});
    EXPECT_TRUE(settings.value(QStringLiteral("autostartColima")).toBool());
}

TEST_F(Running, Turning_the_start_at_login_off_leaves_colima_started_by_hand)
{
    run(model().changeAutostart(false));
    ASSERT_EQ(user.alerts().size(), 1);
    EXPECT_TEXT(user.alerts().first().title, "Stop starting Colima at login?");
    EXPECT_TEXT(user.alerts().first().text,
                "Homebrew's login service for Colima will be stopped, and Colima will be started again by hand (it "
                "will not start at login).");
    EXPECT_TEXT(model().installOp()->title(), "Turning off Colima at login");
    waitForOperation(model().installOp());
    EXPECT_EQ(Mac::calls(QStringLiteral("brew")), QStringList{QStringLiteral("services stop colima")});
    EXPECT_EQ(Mac::calls(QStringLiteral("colima")), QStringList{kStart});
    EXPECT_FALSE(settings.value(QStringLiteral("autostartColima")).toBool());
}

TEST_F(Running, A_cancelled_question_puts_the_setting_back)
{
    user.cancels();
    run(model().changeAutostart(false));
    EXPECT_TRUE(model().autostartColima());
    EXPECT_TRUE(settings.value(QStringLiteral("autostartColima")).toBool());
    EXPECT_FALSE(model().operationRunning());
    EXPECT_TRUE(Mac::calls(QStringLiteral("brew")).isEmpty());
}

TEST_F(Running, While_an_operation_runs_only_the_setting_changes)
{
    Mac::ctl(QStringLiteral("fault colima late 0.3 --at 1"));
    model().startColimaOnly();
    run(model().changeAutostart(false));
    EXPECT_FALSE(model().autostartColima());
    EXPECT_TRUE(user.alerts().isEmpty());
    waitForOperation(model().installOp());
    EXPECT_TRUE(Mac::calls(QStringLiteral("brew")).isEmpty());
}

TEST_F(Homebrew, Without_colima_only_the_setting_changes)
{
    run(model().changeAutostart(false));
    EXPECT_FALSE(model().autostartColima());
    EXPECT_TRUE(user.alerts().isEmpty());
    EXPECT_FALSE(model().operationRunning());
}

TEST_F(Stopped, After_a_minute_without_docker_the_waiting_ends)
{
    Mac::ctl(QStringList{QStringLiteral("colima"), QStringLiteral("fail"), QStringLiteral("error starting vm")});
    model().applyAutostart(true);
    waitForOperation(model().installOp());
    waitFor([this] { return clock.waited() >= std::chrono::seconds(60); }, "twenty rounds");
    const auto rounds = Mac::calls(QStringLiteral("docker")).filter(QStringLiteral("info")).size();
    EXPECT_EQ(rounds, 1 + 20) << "one before, and one in each round";
    QCoro::waitFor(clock.pause(std::chrono::seconds(10)));
    EXPECT_EQ(Mac::calls(QStringLiteral("docker")).filter(QStringLiteral("info")).size(), rounds);
}

TEST_F(Stopped, A_model_that_goes_away_while_it_waits_for_docker_ends_the_waiting)
{
    Mac::ctl(QStringList{QStringLiteral("colima"), QStringLiteral("fail"), QStringLiteral("error starting vm")});
    model().applyAutostart(true);
    waitForOperation(model().installOp());
    relaunch();
    const auto calls = Mac::calls(QStringLiteral("docker")).size();
    QCoro::waitFor(clock.pause(std::chrono::seconds(20)));
    EXPECT_LE(Mac::calls(QStringLiteral("docker")).size(), calls + 1);
}

TEST_F(Running, A_switch_whose_tool_has_gone_since_the_last_look_says_so)
{
    Mac::ctl(QStringLiteral("fault brew vanish"));
    run(model().changeAutostart(false));
    EXPECT_TEXT(model().notice(), "Homebrew was not found.");
    EXPECT_TRUE(quiet());
    model().setNotice({});
    Mac::ctl(QStringLiteral("fault colima vanish"));
    run(model().changeAutostart(true));
    EXPECT_TEXT(model().notice(), "Colima was not found.");
}

TEST(GeneratedPassword, Has_sixteen_signs_and_no_look_alikes)
{
    const QString password = AppModel::generatePassword();
    EXPECT_EQ(password.size(), 16);
    for (const QChar character : QStringLiteral("loIO01"))
        EXPECT_FALSE(password.contains(character));
    EXPECT_NE(password, AppModel::generatePassword());
}

} // namespace corvane::test
