#include "app/app_model.h"
#include "app/colima_start.h"
#include "app/disturbance.h"
#include "app/operation.h"
#include "runtime/colima_manager.h"
#include "runtime/pihole_controller.h"

namespace corvane {

namespace {

constexpr std::chrono::seconds kHealthLimit{90};
constexpr std::chrono::seconds kBetweenAttempts{2};
constexpr int kAttempts = 3;
const QString kPihole = QStringLiteral("pihole");
const QString kSilentDns = QStringLiteral("No answer on 127.0.0.1 port 53.");
enum Row { kContainerRow, kPageRow, kDnsRow };

CheckRows initialRows(int webPort)
{
    const QString waiting = QStringLiteral("Waiting...");
    return {{QStringLiteral("container"), QStringLiteral("Container running and healthy"), CheckState::Running,
             QStringLiteral("Checking...")},
            {QStringLiteral("web"), QStringLiteral("Admin page answers on 127.0.0.1:%1").arg(webPort),
             CheckState::Unknown, waiting},
            {QStringLiteral("dns"), QStringLiteral("dig @127.0.0.1 example.com returns an answer"), CheckState::Unknown,
             waiting}};
}

bool mayStillBecomeHealthy(const ContainerState &container)
{
    if (container.kind() == ContainerState::Kind::Stopped) return true;
    return container.isRunning() && container.text() != QLatin1String("healthy") &&
           container.text() != QLatin1String("none");
}

CheckState stateOf(bool passed) { return passed ? CheckState::Ok : CheckState::Failed; }

struct Finding {
    bool passed = false;
    QString detail;
};

Finding containerFinding(const ContainerState &container)
{
    switch (container.kind()) {
    case ContainerState::Kind::Running:
        if (container.text() == QLatin1String("healthy")) return {true, QStringLiteral("Running and healthy.")};
        if (container.text() == QLatin1String("none"))
            return {true, QStringLiteral("Running (this image reports no health status).")};
        return {false,
                QStringLiteral("Running, but its health is '%1'. It may still be starting; wait a minute and press "
                               "Test.")
                    .arg(container.text())};
    case ContainerState::Kind::Stopped:
        return {false, QStringLiteral("The container exists but is '%1'.").arg(container.text())};
    case ContainerState::Kind::Missing:
        return {false, QStringLiteral("No container named 'pihole' yet. Press Start Pi-hole.")};
    case ContainerState::Kind::DockerDown:
        break;
    }
    return {false, QStringLiteral("Docker is not running.")};
}

} // namespace

Flow<> AppModel::runPiholeTests(Wait wait)
{
    const ActivityMark run(m_activities, Activity::PiholeTests);
    co_await boundTo(run);
    const Clock::Duration limit = wait == Wait::ForStart ? kHealthLimit : std::chrono::seconds::zero();
    HealthPatience patience{limit, limit};
    bool passed = false;
    bool disturbed = true;
    while (!passed && disturbed) {
        const Disturbance disturbance(m_activities);
        passed = co_await testPihole(&run, patience);
        disturbed = disturbance.happened();
        if (!passed && disturbed) setPiholeChecks(initialRows(webPort()));
        while (!passed && disturbance.lasts())
            co_await m_clock.pause(kBetweenAttempts);
        patience.running = kHealthLimit;
    }
    recordOutcome(QStringLiteral("pihole"), passed,
                  passed ? QStringLiteral("Container, admin page and DNS answer all passed")
                         : QStringLiteral("At least one Pi-hole check failed"));
    co_await refreshStatus(Stats::Include);
}

/// The three rows; whether all of them are good.
Flow<bool> AppModel::testPihole(const ActivityMark *run, HealthPatience patience)
{
    co_await boundTo(*run);
    setPiholeChecks(initialRows(webPort()));
    configureAPI();

    const bool containerPassed = co_await testContainer(run, patience);
    const int attempts = containerPassed ? kAttempts : 1;
    const bool pagePassed = co_await testAdminPage(run, attempts);
    const bool dnsPassed = co_await testDns(run, attempts, containerPassed);
    const bool allPassed = containerPassed && pagePassed && dnsPassed;
    co_return allPassed;
}

void AppModel::showPiholeCheck(int row, CheckState state, const QString &detail)
{
    CheckRows rows = piholeChecks();
    rows[row].title = initialRows(webPort())[row].title; // the port may be another one by now
    rows[row].state = state;
    rows[row].detail = detail;
    setPiholeChecks(rows);
}

Flow<bool> AppModel::testContainer(const ActivityMark *run, HealthPatience patience)
{
    co_await boundTo(*run);
    const Clock::Instant begun = m_clock.now();
    const auto limit = [patience](const ContainerState &seen) {
        return seen.isRunning() ? patience.running : patience.stopped;
    };
    ContainerState container = co_await PiholeController::containerState();
    while (mayStillBecomeHealthy(container) && m_clock.now() < begun + limit(container)) {
        co_await m_clock.pause(kBetweenAttempts);
        container = co_await PiholeController::containerState();
    }
    const Finding finding = containerFinding(container);
    showPiholeCheck(kContainerRow, stateOf(finding.passed), finding.detail);
    co_return finding.passed;
}

Flow<bool> AppModel::testAdminPage(const ActivityMark *run, int attempts)
{
    co_await boundTo(*run);
    bool answers = co_await m_api.webAnswers();
    for (int attempt = 1; !answers && attempt < attempts; ++attempt) {
        co_await m_clock.pause(kBetweenAttempts);
        answers = co_await m_api.webAnswers();
    }
    showPiholeCheck(kPageRow, stateOf(answers),
                    answers ? dashboardURL().toString() + QStringLiteral(" answered.")
                            : QStringLiteral("No answer on port %1.").arg(webPort()));
    co_return answers;
}

Flow<bool> AppModel::testDns(const ActivityMark *run, int attempts, bool containerPassed)
{
    co_await boundTo(*run);
    setUdpProblem(false);
    setTcpWorks(false);
    setUdpReplied(false);
    setNote(kPihole, {});
    const QString name = QStringLiteral("example.com");
    DigResult reply = co_await PiholeController::ask(name);
    for (int attempt = 1; !reply.answered() && attempt < attempts; ++attempt) {
        co_await m_clock.pause(kBetweenAttempts);
        reply = co_await PiholeController::ask(name);
    }
    if (reply.ok) m_day.countOwn();
    if (reply.answered())
        showPiholeCheck(kDnsRow, CheckState::Ok, QStringLiteral("Answer: ") + reply.answers.join(QStringLiteral(", ")));
    else if (!containerPassed)
        showPiholeCheck(kDnsRow, CheckState::Failed, kSilentDns);
    co_await explainReply(run, reply);
    if (containerPassed && !reply.answered()) co_await explainSilentDns(run);
    co_return reply.answered();
}

/// Says beside the row what a reply, or none, says about Pi-hole.
Flow<> AppModel::explainReply(const ActivityMark *run, DigResult reply)
{
    co_await boundTo(*run);
    const DnsTrouble trouble = co_await dnsTroubleProven(reply);
    setUdpReplied(!reply.status.isEmpty() || trouble == DnsTrouble::NothingBehind);
    setNote(kPihole, trouble == DnsTrouble::Silent ? QString() : sentence(trouble));
}

/// A healthy container gave no answer over UDP: finds out whether TCP works, and whether Colima can forward UDP too.
Flow<> AppModel::explainSilentDns(const ActivityMark *run)
{
    co_await boundTo(*run);
    const ContainerState container = co_await PiholeController::containerState();
    if (!container.isRunning()) { // it has ended since
        showPiholeCheck(kDnsRow, CheckState::Failed, kSilentDns);
        co_return;
    }
    const QString name = QStringLiteral("example.com");
    const DigResult overTcp = co_await PiholeController::ask(name, Transport::Tcp);
    const bool flagSupported = co_await ColimaManager::supportsPortForwarderFlag();
    setGrpcFlagSupported(flagSupported);
    setTcpWorks(overTcp.answered());
    setUdpProblem(true);
    showPiholeCheck(kDnsRow, CheckState::Failed,
                    tcpWorks()
                        ? QStringLiteral("No answer over UDP, but TCP works. UDP port 53 is probably not reaching "
                                         "the Mac.")
                        : QStringLiteral("No answer over UDP (or TCP). UDP port 53 is probably not reaching the Mac, "
                                         "or Pi-hole is still starting."));
}

Flow<> AppModel::fixUDPForwarding()
{
    if (!mayBegin(Activity::UdpFix, &AppModel::setNotice)) co_return;
    std::optional<ActivityMark> mark(std::in_place, m_activities, Activity::UdpFix, ActivityMark::Begin::WhenAgreed);
    co_await boundTo(*mark);
    const CommandSteps steps = ColimaManager::restartWithGrpcSteps();
    if (steps.isEmpty()) {
        setNotice(kNoColima);
        co_return;
    }
    Alert question;
    question.title = QStringLiteral("Restart Colima with UDP forwarding?");
    question.text = QStringLiteral("Colima will be stopped and started again with the gRPC port forwarder, which also "
                                   "forwards UDP. Pi-hole comes back by itself afterwards.");
    question.accept = QStringLiteral("Restart Colima");
    question.reject = QStringLiteral("Cancel");
    const bool accepted = co_await m_dialogs.confirm(question);
    if (!accepted) co_return;

    mark->agreed();
    const bool restarted = co_await perform(&m_startOp, QStringLiteral("Restarting Colima"), steps);
    co_await refreshTools();
    mark.reset(); // nothing that follows is in the way of anything
    if (restarted) co_await runPiholeTests(Wait::ForStart);
}

Flow<> AppModel::runAllTests()
{
    co_await runPiholeTests(Wait::No);
    // A removal forgets what was found; there is nothing left to test.
    if (!outcomes().contains(kPihole)) co_return;
    co_await runBlockingTest();
    if (!outcomes().contains(kPihole)) co_return;
    co_await runSystemTest();
}

} // namespace corvane
