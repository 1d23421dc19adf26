#include "tests/story/story.h"

#include "tests/support/pass_time.h"

#include <QCoro/QCoroTask>
#include <QDeadlineTimer>

namespace corvane::test {

namespace {

constexpr int kPatience = 120'000; // milliseconds
constexpr int kBetweenLooks = 10;  // milliseconds
constexpr int kCalmLooks = 10;     // looks without any activity
constexpr int kReturn = 5'000;     // milliseconds until Docker is back at the latest

void toEnd(Flow<> flow) { QCoro::waitFor(std::move(flow)); }

QString unless(bool good, const QString &problem) { return good ? QString() : problem; }

QString failedRows(const CheckRows &rows)
{
    QStringList failed;
    for (const CheckRow &row : rows) {
        if (row.state != CheckState::Ok && row.state != CheckState::Warning)
            failed += row.title + QStringLiteral(": ") + row.detail;
    }
    return failed.join(u' ');
}

QString outcomeProblem(const AppModel &model, const QString &test)
{
    const auto outcome = model.outcomes().value(test);
    return unless(outcome.passed, outcome.summary.isEmpty() ? QStringLiteral("There is no result.") : outcome.summary);
}

QString operationProblem(OperationRunner *operation)
{
    return unless(operation->ended() && operation->succeeded(), operation->failureText());
}

} // namespace

bool Story::settle(AppModel &model, const std::function<bool()> &done)
{
    const QDeadlineTimer deadline(kPatience);
    QDeadlineTimer expected(kReturn);
    int calmLooks = 0;
    while (calmLooks < kCalmLooks || (done && !done() && !expected.hasExpired())) {
        if (deadline.hasExpired()) return false;
        passTime(kBetweenLooks);
        ++calmLooks;
        if (!model.operationRunning() && !model.underWay()) continue;
        calmLooks = 0;
        expected.setRemainingTime(kReturn);
    }
    return true;
}

Story::Story(AppModel &model)
    : m_model(model)
{
    addChecks();
    addInstallation();
    addPihole();
    addDns();
    addReturn();
}

void Story::add(const QString &text, std::function<void()> act, std::function<QString()> problem)
{
    m_steps += {text, std::move(act), std::move(problem)};
}

void Story::addChecks()
{
    add(
        QStringLiteral("The Mac is checked: Homebrew is there, docker and Colima are not yet"),
        [this] { toEnd(m_model.runSystemChecks()); },
        [this] {
            QStringList missing;
            for (const CheckRow &row : m_model.systemChecks()) {
                if (row.state == CheckState::Failed) missing += row.id;
            }
            return unless(missing.join(u' ') == QStringLiteral("docker colima"),
                          QStringLiteral("What failed: ") + missing.join(u' '));
        });
}

void Story::addInstallation()
{
    add(
        QStringLiteral("Colima and Docker are installed, and set to start at login"),
        [this] {
            m_model.installColimaAndDocker();
            const OperationRunner *operation = m_model.installOp();
            settle(m_model, [this, operation] {
                const bool last = operation->title() == QStringLiteral("Turning on Colima at login");
                return operation->ended() && (!operation->succeeded() || (last && m_model.dockerWorks()));
            });
        },
        [this] { return operationProblem(m_model.installOp()); });
    add(
        QStringLiteral("Docker works"), [this] { toEnd(m_model.testDocker()); },
        [this] { return outcomeProblem(m_model, QStringLiteral("docker")); });
    add(
        QStringLiteral("The Mac is checked again: everything is there"), [this] { toEnd(m_model.runSystemChecks()); },
        [this] { return failedRows(m_model.systemChecks()); });
}

void Story::addPihole()
{
    add(
        QStringLiteral("Pi-hole is downloaded and started with a generated password"),
        [this] {
            m_model.setPasswordInput(AppModel::generatePassword());
            toEnd(m_model.startPihole());
            settle(m_model);
        },
        [this] {
            return m_model.startMessage().isEmpty() ? operationProblem(m_model.startOp()) : m_model.startMessage();
        });
    add(
        QStringLiteral("Colima forwards TCP only, so DNS over UDP does not arrive yet"), [] {},
        [this] {
            return unless(m_model.udpProblem() && m_model.tcpWorks() && m_model.grpcFlagSupported(),
                          failedRows(m_model.piholeChecks()));
        });
    add(
        QStringLiteral("Colima is restarted with the other forwarder, and the tests go on by themselves"),
        [this] {
            toEnd(m_model.fixUDPForwarding());
            settle(m_model, [this] { return passed(m_model.outcomes(), QStringLiteral("pihole")); });
        },
        [this] { return operationProblem(m_model.startOp()); });
    add(
        QStringLiteral("Its container is healthy, its page and its DNS answer"),
        [this] { toEnd(m_model.runPiholeTests(Wait::No)); },
        [this] {
            const QString failed = failedRows(m_model.piholeChecks());
            return failed.isEmpty() ? outcomeProblem(m_model, QStringLiteral("pihole")) : failed;
        });
    add(
        QStringLiteral("A tracker is blocked and a normal name is not"), [this] { toEnd(m_model.runBlockingTest()); },
        [this] { return outcomeProblem(m_model, QStringLiteral("blocking")); });
}

void Story::addDns()
{
    add(
        QStringLiteral("The network service with the internet connection is chosen"),
        [this] { toEnd(m_model.loadServices()); },
        [this] {
            return unless(m_model.selectedServices().size() == 1, QStringLiteral("No single service is chosen."));
        });
    add(
        QStringLiteral("This Mac is pointed at Pi-hole, after one administrator prompt"),
        [this] { toEnd(m_model.applyDNS()); },
        [this] { return unless(m_model.dnsMessage() == QStringLiteral("DNS changed."), m_model.dnsMessage()); });
    add(
        QStringLiteral("Three lookups by the system arrive in Pi-hole's log"), [] {},
        [this] {
            return unless(m_model.systemTestDetail().startsWith(QStringLiteral("3 of 3 ")) &&
                              passed(m_model.outcomes(), QStringLiteral("system")),
                          m_model.systemTestDetail());
        });
    add(
        QStringLiteral("The icon is green, and the set-up counts as finished"),
        [this] { toEnd(m_model.refreshStatus(Stats::Include)); },
        [this] {
            return unless(m_model.icon() == MenuIcon::Active && m_model.setupSucceeded() && m_model.wizardFinished(),
                          m_model.statusLine());
        });
}

void Story::addReturn()
{
    add(
        QStringLiteral("The old DNS settings are put back, after one administrator prompt"),
        [this] { toEnd(m_model.restoreOldSettings()); },
        [this] {
            return unless(m_model.notice() == QStringLiteral("Your old DNS settings are back."), m_model.dnsMessage());
        });
    add(
        QStringLiteral("This Mac no longer asks Pi-hole, which still answers"),
        [this] { toEnd(m_model.refreshStatus(Stats::Leave)); },
        [this] { return unless(m_model.icon() == MenuIcon::NotUsed, m_model.statusLine()); });
}

} // namespace corvane::test
