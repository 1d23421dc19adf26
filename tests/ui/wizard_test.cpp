#include "app/wizard_steps.h"
#include "tests/ui/states.h"
#include "tests/ui/wizard.h"
#include "ui/decisions/steps.h"

#include <QAccessible>
#include <QTest>

namespace corvane::test {

namespace {

TEST_F(Wizard, Every_step_shows_its_own_view_beside_its_row)
{
    openStep(0);
    for (const WizardStepRow &row : kWizardSteps) {
        m_app.go(row.step);
        settle();
        const QString title = QString::fromLatin1(row.title);
        EXPECT_TRUE(textOf(QStringLiteral("step%1Label").arg(stepNumber(row.step))).endsWith(title));
        if (row.step != kLastStep) {
            EXPECT_EQ(textOf(QStringLiteral("stepTitle")), title);
        }
        EXPECT_EQ(textOf(QStringLiteral("stepPosition")), m_looks.stepPosition());
    }
    EXPECT_TRUE(shows(QStringLiteral("outcomes")));
}

TEST_F(Wizard, Welcome_says_beside_the_button_how_restoring_went)
{
    openStep(0);
    EXPECT_FALSE(shows(QStringLiteral("welcomeRestoreMessage")));
    m_app.setDnsMessage(QStringLiteral("Nothing was changed."));
    settle();
    EXPECT_EQ(textOf(QStringLiteral("welcomeRestoreMessage")), m_app.dnsMessage());
    const auto middle = [this](const char *name) {
        const QQuickItem *item = find(QString::fromLatin1(name));
        return item->mapToScene(QPointF(item->width() / 2, item->height() / 2));
    };
    EXPECT_GT(middle("welcomeRestoreMessage").x(), middle("welcomeRestoreButton").x());
    EXPECT_NEAR(middle("welcomeRestoreMessage").y(), middle("welcomeRestoreButton").y(), 2);
}

TEST_F(Wizard, There_is_no_way_back_from_the_first_step_and_none_on_from_the_last)
{
    openStep(0);
    EXPECT_FALSE(enabled(QStringLiteral("backButton")));
    EXPECT_TRUE(enabled(QStringLiteral("nextButton")));
    click(QStringLiteral("nextButton"));
    EXPECT_EQ(m_app.step(), 1);
    settle();
    click(QStringLiteral("backButton"));
    EXPECT_EQ(m_app.step(), 0);
    click(QStringLiteral("step8"));
    EXPECT_EQ(m_app.step(), 7);
    EXPECT_TRUE(enabled(QStringLiteral("backButton")));
    EXPECT_FALSE(shows(QStringLiteral("nextButton")));
}

TEST_F(Wizard, Checks_run_by_themselves_the_first_time_only)
{
    openStep(1);
    EXPECT_TRUE(QTest::qWaitFor([this] { return !m_app.systemChecks().isEmpty(); }));
    showChecks(m_app, false);
    click(QStringLiteral("step1"));
    click(QStringLiteral("step2"));
    EXPECT_TRUE(m_app.busy().isEmpty());
    expectRows(QStringLiteral("systemChecks"), m_looks.systemChecks());
}

TEST_F(Wizard, A_busy_check_cannot_be_started_twice)
{
    openStep(1);
    EXPECT_TRUE(QTest::qWaitFor([this] { return m_app.busy().isEmpty(); }));
    m_app.setBusy({QStringLiteral("checks")});
    EXPECT_FALSE(enabled(QStringLiteral("checksButton")));
    m_app.setBusy({});
    EXPECT_TRUE(enabled(QStringLiteral("checksButton")));
}

TEST_F(Wizard, Taken_ports_name_their_holders_and_offer_another_web_port)
{
    openStep(1);
    showChecks(m_app, true);
    ASSERT_GT(m_looks.takenPorts()->count(), 0);
    expectRows(QStringLiteral("portsPanel"), m_looks.takenPorts());
    EXPECT_TRUE(reads(QStringLiteral("dnsmasq  4711 anna")));
    EXPECT_TRUE(enabled(QStringLiteral("freePortPicker")));
}

TEST_F(Wizard, No_other_port_is_chosen_while_an_operation_runs)
{
    openStep(1);
    showChecks(m_app, true);
    const SleepingOperation maintenance(*m_app.maintOp());
    EXPECT_FALSE(enabled(QStringLiteral("freePortPicker")));
}

TEST_F(Wizard, Only_an_installation_keeps_from_installing)
{
    openStep(2);
    m_app.setHasBrew(true);
    {
        const SleepingOperation start(*m_app.startOp());
        EXPECT_TRUE(enabled(QStringLiteral("installButton")));
        EXPECT_FALSE(enabled(QStringLiteral("startColimaButton")));
    }
    const SleepingOperation installation(*m_app.installOp());
    EXPECT_FALSE(enabled(QStringLiteral("installButton")));
    EXPECT_FALSE(enabled(QStringLiteral("startColimaButton")));
}

TEST_F(Wizard, A_start_that_a_port_prevented_shows_who_holds_it)
{
    openStep(3);
    showChecks(m_app, true);
    EXPECT_FALSE(shows(QStringLiteral("portsPanel")));
    m_app.setStartMessage(QStringLiteral("Something else."));
    EXPECT_FALSE(shows(QStringLiteral("portsPanel")));
    m_app.setStartMessage(AppModel::kPortTaken);
    EXPECT_TRUE(shows(QStringLiteral("portsPanel")));
    expectRows(QStringLiteral("portsPanel"), m_looks.takenPorts());
}

TEST_F(Wizard, A_taken_port_53_alone_offers_no_other_port)
{
    openStep(1);
    showChecks(m_app, true);
    QList<PortReport> reports = m_app.portReports();
    reports[2].probe = PortProbe::Free;
    m_app.setPortReports(reports);
    EXPECT_TRUE(shows(QStringLiteral("portsPanel")));
    EXPECT_FALSE(shows(QStringLiteral("freePortPicker")));
}

TEST_F(Wizard, Without_Homebrew_it_shows_the_way_to_it)
{
    openStep(2);
    expectRows(QStringLiteral("tools"), m_looks.tools());
    EXPECT_FALSE(shows(QStringLiteral("installButton")));
    click(QStringLiteral("getHomebrewButton"));
    ASSERT_EQ(m_workspace.opened.size(), 1);
    EXPECT_EQ(m_workspace.opened.first().host(), QStringLiteral("brew.sh"));
}

TEST_F(Wizard, With_Homebrew_it_offers_to_install_and_to_start)
{
    openStep(2);
    m_app.setHasBrew(true);
    EXPECT_TRUE(enabled(QStringLiteral("installButton")));
    EXPECT_TRUE(enabled(QStringLiteral("startColimaButton")));
    EXPECT_FALSE(shows(QStringLiteral("getHomebrewButton")));
}

TEST_F(Wizard, The_test_of_Docker_shows_its_result)
{
    openStep(2);
    EXPECT_FALSE(shows(QStringLiteral("dockerTestResult")));
    click(QStringLiteral("dockerTestButton"));
    settle();
    EXPECT_TRUE(shows(QStringLiteral("dockerTestResult")));
}

TEST_F(Wizard, The_password_step_proposes_a_password)
{
    openStep(3);
    EXPECT_EQ(textOf(QStringLiteral("passwordField")).size(), 16);
    EXPECT_EQ(textOf(QStringLiteral("stepSubtitle")), m_looks.piholeSubtitle());
    EXPECT_TRUE(shows(QStringLiteral("dockerIsMissing")));
    EXPECT_FALSE(enabled(QStringLiteral("startPiholeButton")));
    m_app.setDockerWorks(true);
    EXPECT_TRUE(enabled(QStringLiteral("startPiholeButton")));
    EXPECT_FALSE(shows(QStringLiteral("dockerIsMissing")));
}

TEST_F(Wizard, A_saved_password_stays)
{
    m_app.setAdminPassword(QStringLiteral("from.the-keychain"));
    openStep(3);
    EXPECT_EQ(textOf(QStringLiteral("passwordField")), QStringLiteral("from.the-keychain"));
    click(QStringLiteral("copyPasswordButton"));
    EXPECT_EQ(m_workspace.copiedSecret, QStringLiteral("from.the-keychain"));
    click(QStringLiteral("generateButton"));
    EXPECT_EQ(textOf(QStringLiteral("passwordField")).size(), 16);
}

TEST_F(Wizard, A_password_that_breaks_a_rule_says_which_and_cannot_start)
{
    openStep(3);
    m_app.setDockerWorks(true);
    find(QStringLiteral("passwordField"))->forceActiveFocus();
    press(Qt::Key_A, Qt::ControlModifier);
    type(QStringLiteral("seven77"));
    EXPECT_EQ(m_app.passwordInput(), QStringLiteral("seven77"));
    EXPECT_TRUE(shows(QStringLiteral("tooShortHint")));
    EXPECT_FALSE(shows(QStringLiteral("otherCharactersHint")));
    EXPECT_FALSE(enabled(QStringLiteral("startPiholeButton")));
    type(QStringLiteral(" x"));
    EXPECT_FALSE(shows(QStringLiteral("tooShortHint")));
    EXPECT_TRUE(shows(QStringLiteral("otherCharactersHint")));
    EXPECT_FALSE(enabled(QStringLiteral("startPiholeButton")));
}

TEST_F(Wizard, A_missing_UDP_answer_brings_help)
{
    openStep(3);
    EXPECT_FALSE(shows(QStringLiteral("udpHelp")));
    showPiholeTests(m_app, false);
    EXPECT_TRUE(shows(QStringLiteral("udpHelp")));
    EXPECT_FALSE(shows(QStringLiteral("fixUdpButton")));
    m_app.setGrpcFlagSupported(true);
    EXPECT_TRUE(enabled(QStringLiteral("fixUdpButton")));
}

TEST_F(Wizard, Blocking_results_say_what_was_blocked_and_what_was_not)
{
    openStep(4);
    EXPECT_FALSE(shows(QStringLiteral("blockingRows")));
    EXPECT_FALSE(shows(QStringLiteral("blockingCounts")));
    BlockingTestResult result;
    result.blockedDomain = QStringLiteral("ads.example.net");
    result.blockedKind = QStringLiteral("answered in a way that leads nowhere");
    result.allowedAnswer = QStringLiteral("93.184.216.34");
    result.queries = 120;
    result.blockedToday = 17;
    m_app.setBlockingTest(result);
    expectRows(QStringLiteral("blockingRows"), m_looks.blockingRows());
    EXPECT_EQ(textOf(QStringLiteral("blockingCounts")), m_looks.blockingCounts());
}

TEST_F(Wizard, A_step_that_is_done_is_spoken_as_done_even_when_it_is_the_current_one)
{
    openStep(2);
    m_app.setDockerWorks(true);
    EXPECT_EQ(QAccessible::queryAccessibleInterface(find(QStringLiteral("step3")))->text(QAccessible::Name),
              stepRow(WizardStep::Install, AppModel::stepTitles().at(WizardStep::Install), true, true).detail);
}

} // namespace

} // namespace corvane::test
