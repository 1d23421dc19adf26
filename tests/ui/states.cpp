#include "tests/ui/states.h"

#include <QTest>
#include <gtest/gtest.h>

namespace corvane::test {

namespace {

void showStatus(AppModel &app, const ContainerState &container, bool answering, bool usedByMac)
{
    app.setContainerState(container);
    app.setAnswering(answering);
    app.setUsedByMac(usedByMac);
    app.setStatusChecked(true);
}

} // namespace

void showRunning(AppModel &app)
{
    showStatus(app, ContainerState::running(QStringLiteral("healthy")), true, true);
    app.setSummary(PiholeSummary{18342, 4127, 22.5});
    app.setBlocking(PiholeBlocking{true, std::nullopt});
    app.setAdminPassword(QStringLiteral("kR7vWq2mXz9bTn4c"));
}

void showStopped(AppModel &app) { showStatus(app, ContainerState::stopped(QStringLiteral("exited")), false, false); }

void showDockerDown(AppModel &app) { showStatus(app, ContainerState::dockerDown(), false, false); }

void showNotUsed(AppModel &app)
{
    showRunning(app);
    app.setUsedByMac(false);
}

void showUsedButDead(AppModel &app)
{
    showStatus(app, ContainerState::dockerDown(), false, true);
    app.setSummary(std::nullopt);
    app.setBlocking(std::nullopt);
}

void showPaused(AppModel &app, double secondsLeft)
{
    showRunning(app);
    app.setBlocking(PiholeBlocking{false, secondsLeft});
    app.setApiMessage(QStringLiteral("Blocking is paused for 5 minutes."));
}

void showChecks(AppModel &app, bool portsTaken)
{
    const CheckState ports = portsTaken ? CheckState::Failed : CheckState::Ok;
    app.setSystemChecks({
        {QStringLiteral("cpu"), QStringLiteral("Apple silicon"), CheckState::Ok,
         QStringLiteral("This is an Apple silicon Mac.")},
        {QStringLiteral("os"), QStringLiteral("macOS version"), CheckState::Ok,
         QStringLiteral("macOS 14.5 is supported.")},
        {QStringLiteral("brew"), QStringLiteral("Homebrew"), CheckState::Warning,
         QStringLiteral("Not found, but you do not need it right now.")},
        {QStringLiteral("docker"), QStringLiteral("docker"), CheckState::Ok,
         QStringLiteral("/opt/homebrew/bin/docker")},
        {QStringLiteral("colima"), QStringLiteral("colima"), CheckState::Running, QStringLiteral("Checking...")},
        {QStringLiteral("ports"), QStringLiteral("Ports 53 and 8080"), ports,
         portsTaken ? QStringLiteral("At least one port is already in use. Details are below.")
                    : QStringLiteral("All free.")},
    });
    if (!portsTaken) return;
    const QString holder = QStringLiteral("COMMAND   PID USER   FD   TYPE DEVICE SIZE/OFF NODE NAME\n"
                                          "dnsmasq  4711 anna    5u  IPv4 0x1f2e      0t0  UDP 127.0.0.1:53");
    app.setPortReports({
        {QStringLiteral("53u"), QStringLiteral("UDP 53 on 127.0.0.1"), 53, true, PortProbe::InUse, holder},
        {QStringLiteral("53t"), QStringLiteral("TCP 53 on 127.0.0.1"), 53, false, PortProbe::Free, {}},
        {QStringLiteral("web"), QStringLiteral("TCP 8080 on 127.0.0.1"), 8080, false, PortProbe::InUse,
         QStringLiteral("COMMAND   PID USER   FD   TYPE\nnode     9911 anna   23u  IPv4")},
    });
}

void showPiholeTests(AppModel &app, bool passed)
{
    const CheckState dns = passed ? CheckState::Ok : CheckState::Failed;
    app.setPiholeChecks({
        {QStringLiteral("container"), QStringLiteral("Container running and healthy"), CheckState::Ok,
         QStringLiteral("Running and healthy.")},
        {QStringLiteral("web"), QStringLiteral("Admin page answers on 127.0.0.1:8080"), CheckState::Ok,
         QStringLiteral("http://127.0.0.1:8080/admin answered.")},
        {QStringLiteral("dns"), QStringLiteral("dig @127.0.0.1 example.com returns an answer"), dns,
         passed ? QStringLiteral("Answer: 93.184.216.34")
                : QStringLiteral("No answer over UDP, but TCP works. UDP port 53 is probably not reaching the Mac.")},
    });
    app.setUdpProblem(!passed);
    app.setTcpWorks(!passed);
}

void showServices(AppModel &app)
{
    app.setServices({
        {QStringLiteral("Wi-Fi"), {}, true},
        {QStringLiteral("USB 10/100/1000 LAN"), {QStringLiteral("192.168.1.1"), QStringLiteral("9.9.9.9")}, false},
        {QStringLiteral("Thunderbolt Bridge of the very long named office in Lübeck (2)"), {}, false},
    });
    app.setSelectedServices({QStringLiteral("Wi-Fi")});
    app.setResolverReport(ResolverReport{{QStringLiteral("192.168.1.1")}, false, {}});
}

void showBrowsers(AppModel &app)
{
    const auto browser = [](const char *id, const char *name, SecureDNSState state, const char *detail,
                            const QStringList &steps) {
        BrowserInfo info;
        info.id = QString::fromLatin1(id);
        info.name = QString::fromLatin1(name);
        info.state = state;
        info.detail = QString::fromLatin1(detail);
        info.steps = steps;
        info.installed = state != SecureDNSState::NotApplicable;
        if (info.installed) info.settingsURL = QStringLiteral("chrome://settings/security");
        return info;
    };
    app.setBrowserReadAllowed(true);
    app.setBrowsers({
        browser("safari", "Safari", SecureDNSState::NotApplicable,
                "Safari has no secure-DNS switch of its own. If iCloud Private Relay is on, Safari traffic bypasses "
                "Pi-hole.",
                {QStringLiteral("Open Private Relay and make sure it is Off (or leave it on and accept that Safari "
                                "skips Pi-hole).")}),
        browser("chrome", "Google Chrome", SecureDNSState::On, "Secure DNS is ON. This bypasses Pi-hole.",
                {QStringLiteral("Open Settings, Privacy and security, then Security."),
                 QStringLiteral("Find 'Use secure DNS' and switch it off (or pick your system's DNS provider).")}),
        browser("edge", "Microsoft Edge", SecureDNSState::NotApplicable, "Not installed.", {}),
        browser("brave", "Brave", SecureDNSState::Off, "Secure DNS is off. Good.", {}),
        browser("firefox", "Firefox", SecureDNSState::UnknownDefault,
                "Not set by you. Firefox enables secure DNS by default in some countries, so check the setting.",
                {QStringLiteral("Open Settings, Privacy & Security, scroll to 'DNS over HTTPS'.")}),
    });
}

void showOutcome(AppModel &app, const QString &test, bool passed, const QString &summary)
{
    Outcomes outcomes = app.outcomes();
    outcomes.insert(test, TestOutcome{passed, summary, QDateTime::currentDateTime()});
    app.setOutcomes(outcomes);
}

void showAllPassed(AppModel &app)
{
    app.setDockerWorks(true);
    showOutcome(app, QStringLiteral("docker"), true, QStringLiteral("docker info works"));
    showOutcome(app, QStringLiteral("pihole"), true, QStringLiteral("Container, admin page and DNS answer all passed"));
    showOutcome(app, QStringLiteral("blocking"), true,
                QStringLiteral("A tracker domain was blocked and a normal one allowed"));
    showOutcome(app, QStringLiteral("system"), true,
                QStringLiteral("3 of 3 test lookups through the system resolver showed up in Pi-hole's log."));
    showOutcome(app, QStringLiteral("browser"), true,
                QStringLiteral("cv-1a2b3c.example.com appeared in Pi-hole's query log, so your default browser uses "
                               "Pi-hole. (The browser's error page was expected.)"));
}

SleepingOperation::SleepingOperation(OperationRunner &runner, const QString &title)
    : m_runner(runner)
{
    CommandStep step;
    step.label = QStringLiteral("sleep");
    step.exe = QStringLiteral("/bin/sleep");
    step.args = {QStringLiteral("60")};
    m_runner.start(title, {step});
}

SleepingOperation::~SleepingOperation()
{
    m_runner.cancel();
    EXPECT_TRUE(QTest::qWaitFor([this] { return m_runner.ended(); }));
}

QStringList logLines(int count)
{
    QStringList lines;
    for (int i = 0; i < count; ++i)
        lines << QStringLiteral("2026-11-21 11:%1:%2 dnsmasq[57]: query[A] name%3.example.com from 127.0.0.1")
                     .arg(i / 60 % 60, 2, 10, QChar(u'0'))
                     .arg(i % 60, 2, 10, QChar(u'0'))
                     .arg(i);
    return lines;
}

} // namespace corvane::test
