#include "tests/ui/states.h"
#include "tests/ui/wizard.h"

#include <QTest>

namespace corvane::test {

namespace {

TEST_F(Wizard, Old_settings_are_not_restored_while_the_DNS_is_being_changed)
{
    openStep(5);
    EXPECT_TRUE(enabled(QStringLiteral("dnsRestoreButton")));
    m_app.setBusy({QStringLiteral("applydns")});
    EXPECT_FALSE(enabled(QStringLiteral("dnsRestoreButton")));
    m_app.setBusy({});
}

TEST_F(Wizard, The_DNS_step_lists_the_services_and_changes_nothing_by_itself)
{
    openStep(5);
    EXPECT_TRUE(shows(QStringLiteral("noServicesText")));
    EXPECT_EQ(textOf(QStringLiteral("serversInUse")), m_looks.serversInUse());
    EXPECT_FALSE(enabled(QStringLiteral("applyDnsButton")));
    showServices(m_app);
    EXPECT_FALSE(shows(QStringLiteral("noServicesText")));
    expectRows(QStringLiteral("services"), m_looks.services());
    EXPECT_EQ(textOf(QStringLiteral("serversInUse")), m_looks.serversInUse());
    EXPECT_TRUE(enabled(QStringLiteral("applyDnsButton")));
    click(QStringLiteral("service1"));
    EXPECT_TRUE(m_app.selectedServices().isEmpty());
    EXPECT_FALSE(enabled(QStringLiteral("applyDnsButton")));
    click(QStringLiteral("service2"));
    EXPECT_EQ(m_app.selectedServices(), QSet<QString>{QStringLiteral("USB 10/100/1000 LAN")});
}

TEST_F(Wizard, While_services_are_read_it_says_so)
{
    openStep(5);
    const QString idle = textOf(QStringLiteral("noServicesText"));
    m_app.setBusy({QStringLiteral("services")});
    EXPECT_NE(textOf(QStringLiteral("noServicesText")), idle);
    m_app.setBusy({});
    EXPECT_EQ(textOf(QStringLiteral("noServicesText")), idle);
}

TEST_F(Wizard, Services_stay_in_their_place_while_they_are_read_again)
{
    openStep(5);
    showServices(m_app);
    settle();
    const double before = find(QStringLiteral("service2"))->mapToScene(QPointF()).y();
    m_app.setBusy({QStringLiteral("services")});
    QTest::qWait(20);
    EXPECT_TRUE(shows(QStringLiteral("servicesNote")));
    EXPECT_EQ(find(QStringLiteral("service2"))->mapToScene(QPointF()).y(), before);
    m_app.setBusy({});
    EXPECT_FALSE(shows(QStringLiteral("servicesNote")));
}

TEST_F(Wizard, Without_a_service_it_says_why_nothing_can_be_changed)
{
    openStep(5);
    EXPECT_FALSE(shows(QStringLiteral("pickServiceHint")));
    showServices(m_app);
    EXPECT_FALSE(shows(QStringLiteral("pickServiceHint")));
    m_app.setSelectedServices({});
    settle();
    EXPECT_TRUE(shows(QStringLiteral("pickServiceHint")));
}

TEST_F(Wizard, Every_answer_to_what_was_pressed_comes_into_sight)
{
    const auto verdictInSight = [this] {
        const QQuickItem *verdict = find(QStringLiteral("browserTestDetail"));
        const double bottom = verdict->mapToScene(QPointF(0, verdict->height())).y();
        return verdict->isVisible() && bottom < find(QStringLiteral("nextButton"))->mapToScene(QPointF()).y();
    };
    openStep(6);
    showBrowsers(m_app);
    find(QStringLiteral("browserTestButton"))->forceActiveFocus();
    m_app.setBrowserTestDetail(QStringLiteral("Opened cv-1a2b3c.example.com in your default browser."));
    EXPECT_TRUE(QTest::qWaitFor(verdictInSight));
    press(Qt::Key_Home);
    EXPECT_FALSE(verdictInSight());
    find(QStringLiteral("browserTestButton"))->forceActiveFocus();
    m_app.setBrowserTestDetail(QStringLiteral("cv-1a2b3c.example.com did not appear in Pi-hole's query log."));
    EXPECT_TRUE(QTest::qWaitFor(verdictInSight));
}

TEST_F(Wizard, An_old_answer_does_not_scroll_the_step_that_is_opened_anew)
{
    showBrowsers(m_app);
    m_app.setBrowserTestDetail(QStringLiteral("Opened cv-1a2b3c.example.com in your default browser."));
    openStep(6);
    QTest::qWait(150);
    EXPECT_GT(find(QStringLiteral("stepTitle"))->mapToScene(QPointF()).y(), 0);
}

TEST_F(Wizard, A_page_is_scrolled_by_keys)
{
    openStep(6);
    showBrowsers(m_app);
    settle();
    const auto titleAt = [this] { return find(QStringLiteral("stepTitle"))->mapToScene(QPointF()).y(); };
    const double start = titleAt();
    find(QStringLiteral("checkBrowsersButton"))->forceActiveFocus();
    press(Qt::Key_PageDown);
    EXPECT_LT(titleAt(), start);
    press(Qt::Key_End);
    const double end = titleAt();
    press(Qt::Key_Up);
    EXPECT_EQ(titleAt(), end + 40);
    press(Qt::Key_Home);
    EXPECT_EQ(titleAt(), start);
}

TEST_F(Wizard, Pi_hole_only_warns)
{
    openStep(5);
    EXPECT_FALSE(shows(QStringLiteral("piholeOnlyWarning")));
    click(QStringLiteral("piholeOnlySwitch"));
    EXPECT_TRUE(m_app.piholeOnly());
    EXPECT_TRUE(shows(QStringLiteral("piholeOnlyWarning")));
}

TEST_F(Wizard, The_DNS_test_says_whether_this_Mac_uses_Pi_hole)
{
    openStep(5);
    const auto verdict = [this] { return textOf(QStringLiteral("systemTestLabel")); };
    showOutcome(m_app, QStringLiteral("system"), false, QStringLiteral("0 of 3"));
    EXPECT_EQ(verdict(), m_looks.systemVerdict());
    const QString failed = verdict();
    showOutcome(m_app, QStringLiteral("system"), true, QStringLiteral("3 of 3"));
    m_app.setSystemTestDetail(QStringLiteral("3 of 3 test lookups showed up."));
    EXPECT_EQ(verdict(), m_looks.systemVerdict());
    EXPECT_NE(verdict(), failed);
    EXPECT_EQ(textOf(QStringLiteral("systemTestDetail")), m_app.systemTestDetail());
}

TEST_F(Wizard, Browsers_are_read_only_after_consent)
{
    openStep(6);
    EXPECT_FALSE(shows(QStringLiteral("checkBrowsersButton")));
    EXPECT_FALSE(shows(QStringLiteral("noBrowserText")));
    EXPECT_TRUE(m_app.browsers().isEmpty());
    click(QStringLiteral("allowBrowserReadButton"));
    EXPECT_TRUE(m_app.browserReadAllowed());
    EXPECT_TRUE(QTest::qWaitFor([this] { return !m_app.browsers().isEmpty(); }));
    EXPECT_FALSE(shows(QStringLiteral("allowBrowserReadButton")));
    EXPECT_TRUE(shows(QStringLiteral("checkBrowsersButton")));
    m_app.setBrowsers({});
    EXPECT_TRUE(shows(QStringLiteral("noBrowserText")));
    showBrowsers(m_app);
    EXPECT_FALSE(shows(QStringLiteral("noBrowserText")));
    EXPECT_FALSE(enabled(QStringLiteral("browser_edgeSettingsButton")));
    EXPECT_TRUE(enabled(QStringLiteral("browser_safariSettingsButton")));
}

TEST_F(Wizard, Success_is_claimed_only_when_both_tests_passed)
{
    openStep(7);
    const auto title = [this] { return textOf(QStringLiteral("stepTitle")); };
    expectRows(QStringLiteral("outcomes"), m_looks.outcomes());
    const QString open = title();
    showOutcome(m_app, QStringLiteral("pihole"), true, QStringLiteral("passed"));
    EXPECT_EQ(title(), open);
    showOutcome(m_app, QStringLiteral("system"), true, QStringLiteral("passed"));
    EXPECT_NE(title(), open);
    expectRows(QStringLiteral("outcomes"), m_looks.outcomes());
}

TEST_F(Wizard, The_last_step_gives_the_password_and_leads_to_the_dashboard)
{
    openStep(7);
    EXPECT_FALSE(enabled(QStringLiteral("doneOpenDashboardButton")));
    showRunning(m_app);
    EXPECT_TRUE(enabled(QStringLiteral("doneOpenDashboardButton")));
    click(QStringLiteral("copyAdminPasswordButton"));
    EXPECT_EQ(m_workspace.copiedSecret, m_app.adminPassword());
    click(QStringLiteral("goToMainWindowButton"));
    EXPECT_TRUE(shows(QStringLiteral("statusLine")));
}

} // namespace

} // namespace corvane::test
