#include "app/app_model.h"
#include "app/file_work.h"
#include "app/redaction.h"
#include "app/report_text.h"
#include "dns/dns_backup.h"
#include "exec/command_runner.h"
#include "exec/tools.h"
#include "platform/system_facts.h"
#include "runtime/colima_manager.h"
#include "runtime/docker_cli.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QSysInfo>

#include <pwd.h>
#include <unistd.h>

#include <algorithm>

namespace corvane {

namespace {

constexpr std::chrono::seconds kToolLimit{10};
/// Of each log; what went wrong is at its end.
constexpr qsizetype kNewestLines = 200;

/// A tool that prints its version.
struct Question {
    QString name;
    std::optional<QString> exe;
    QStringList args;
};

QList<Question> questions()
{
    const QStringList &brewed = ColimaManager::homebrewDirs();
    return {
        {QStringLiteral("brew"), Tools::find(QStringLiteral("brew"), brewed), {QStringLiteral("--version")}},
        {QStringLiteral("colima"), ColimaManager::find(), {QStringLiteral("version")}},
        {QStringLiteral("colima status"), ColimaManager::find(), {QStringLiteral("status")}},
        {QStringLiteral("docker"), DockerCLI::find(), {QStringLiteral("--version")}},
        {QStringLiteral("docker compose"), DockerCLI::find(), {QStringLiteral("compose"), QStringLiteral("version")}}};
}

QString oneLine(const CommandResult &result)
{
    if (result.launchError) return *result.launchError;
    const QString said = result.combined().simplified();
    const QString ended =
        result.timedOut ? QStringLiteral(" [no end within 10 s]") : QStringLiteral(" [status %1]").arg(result.status);
    return result.succeeded() ? said : said + ended;
}

QString stateWord(CheckState state)
{
    static const QStringList words{QStringLiteral("unknown"), QStringLiteral("running"), QStringLiteral("ok"),
                                   QStringLiteral("warning"), QStringLiteral("failed")};
    return words.value(static_cast<int>(state));
}

QStringList asLines(const CheckRows &rows)
{
    QStringList lines;
    for (const CheckRow &row : rows)
        lines += QStringLiteral("%1: %2. %3").arg(row.title, stateWord(row.state), row.detail);
    return lines;
}

QStringList asLines(const Outcomes &outcomes)
{
    QStringList lines;
    for (auto each = outcomes.begin(); each != outcomes.end(); ++each)
        lines += QStringLiteral("%1: %2 at %3. %4")
                     .arg(each.key(), each->passed ? QStringLiteral("passed") : QStringLiteral("failed"),
                          each->date.toString(Qt::ISODate), each->summary);
    lines.sort();
    return lines;
}

void addOperation(ReportText &report, const OperationRunner &runner)
{
    if (runner.title().isEmpty()) return;
    report.section(QStringLiteral("Log: ") + runner.title());
    const QString failed = QStringLiteral("failed: ") + runner.failureText();
    const QString ended = runner.succeeded() ? QStringLiteral("finished") : failed;
    report.fact(QStringLiteral("It"), runner.running() ? QStringLiteral("is running") : ended);
    report.fact(QStringLiteral("Cause"), runner.failure().sentence);
    const QStringList &lines = runner.lines();
    report.lines(lines.sliced(std::max<qsizetype>(0, lines.size() - kNewestLines)));
}

/// The name that the user goes by, and the one that the account goes by.
QStringList people()
{
    const passwd *user = ::getpwuid(::getuid());
    if (!user) return {};
    const QString fullName = QString::fromLocal8Bit(user->pw_gecos).section(u',', 0, 0).trimmed();
    return QStringList{QString::fromLocal8Bit(user->pw_name), QDir::home().dirName()} + Redaction::namesIn(fullName);
}

/// What this program and this Mac are.
void addSystem(ReportText &report, const AppModel &app)
{
    const platform::OsVersion os = platform::osVersion();
    report.fact(QStringLiteral("Corvane"), QCoreApplication::applicationVersion());
    report.fact(QStringLiteral("macOS"), QStringLiteral("%1.%2").arg(os.major).arg(os.minor));
    report.fact(QStringLiteral("Processor"), QSysInfo::currentCpuArchitecture());
    report.fact(QStringLiteral("Qt"), QString::fromLatin1(qVersion()));
    report.fact(QStringLiteral("Pi-hole"), app.pinnedTag());
}

void addState(ReportText &report, const AppModel &app)
{
    report.section(QStringLiteral("State"));
    report.fact(QStringLiteral("Status"), app.statusLine());
    report.fact(QStringLiteral("Beside it"), app.statusNote());
    report.fact(QStringLiteral("Checked"), app.statusChecked());
    report.fact(QStringLiteral("Answers"), app.answering());
    report.fact(QStringLiteral("Used by this Mac"), app.usedByMac());
    report.fact(QStringLiteral("Docker answers"), app.dockerWorks());
    report.fact(QStringLiteral("Engine"), app.engineProblem());
    report.fact(QStringLiteral("Password known"), app.passwordKnown() && !app.adminPassword().isEmpty());
    report.fact(QStringLiteral("Web port"), QString::number(app.webPort()));
    report.fact(QStringLiteral("Colima starts at login"), app.autostartColima());
    report.fact(QStringLiteral("Corvane starts at login"), app.launchAtLogin());
    report.fact(QStringLiteral("Set-up finished"), app.wizardFinished());
    report.fact(QStringLiteral("Old servers are saved"), !app.restoreScript().isEmpty());
    if (app.blocking()) report.fact(QStringLiteral("Blocks"), app.blocking()->enabled);
    if (app.summary() && app.summary()->domainsBlocked)
        report.fact(QStringLiteral("Names on its lists"), QString::number(*app.summary()->domainsBlocked));

    report.section(QStringLiteral("Messages"));
    report.fact(QStringLiteral("Notice"), app.notice());
    report.fact(QStringLiteral("Start"), app.startMessage());
    report.fact(QStringLiteral("DNS"), app.dnsMessage());
    report.fact(QStringLiteral("Pi-hole"), app.apiMessage());
    report.fact(QStringLiteral("Update"), app.updateMessage());
    const QVariantMap beside = app.notes();
    for (auto note = beside.begin(); note != beside.end(); ++note)
        report.fact(QStringLiteral("Note on ") + note.key(), note.value().toString());
}

void addChecks(ReportText &report, const AppModel &app)
{
    report.section(QStringLiteral("Checks"));
    report.lines(asLines(app.systemChecks()));
    report.lines(asLines(app.piholeChecks()));
    report.lines(asLines(app.outcomes()));
    if (!app.resolverReport()) return;
    report.section(QStringLiteral("DNS"));
    report.fact(QStringLiteral("Servers"), app.resolverReport()->defaultServers.join(QStringLiteral(", ")));
    report.fact(QStringLiteral("Pi-hole is the first"), app.resolverReport()->firstIsPihole);
    report.lines(app.resolverReport()->warnings);
}

/// What is known to name a person, a network or a secret here.
Redaction redactionFor(const AppModel &app)
{
    Redaction::Known known;
    known.passwords = {app.adminPassword(), app.passwordInput()};
    for (const NetworkService &service : app.services())
        known.networks += service.name;
    for (const DNSBackupEntry &entry : DNSBackup::load())
        known.networks += entry.service;
    known.people = people();
    known.machines = Redaction::namesOfMachine(QSysInfo::machineHostName());
    known.home = QDir::homePath();
    return Redaction(known);
}

} // namespace

Flow<> AppModel::makeReport()
{
    if (!m_activities.mayBegin(Activity::MakeReport)) co_return;
    const ActivityMark mark(m_activities, Activity::MakeReport);
    co_await boundTo(mark);
    ReportText report;
    report.section(QStringLiteral("Versions"));
    addSystem(report, *this);
    for (const Question &question : questions()) {
        if (!question.exe) {
            report.fact(question.name, QStringLiteral("not found"));
            continue;
        }
        QElapsedTimer time;
        time.start();
        const Command command(*question.exe, question.args);
        const CommandResult result = co_await CommandRunner::run(command.within(kToolLimit));
        report.fact(question.name, QStringLiteral("%1 (%2 ms)").arg(oneLine(result)).arg(time.elapsed()));
    }
    addState(report, *this);
    addChecks(report, *this);
    for (const OperationRunner *runner : {&m_installOp, &m_startOp, &m_maintOp})
        addOperation(report, *runner);
    setReport(redactionFor(*this).of(report.text()));
}

Flow<> AppModel::saveReport()
{
    const QByteArray shown = report().toUtf8();
    FilePanel panel;
    panel.proposedName = QStringLiteral("Corvane report.txt");
    const std::optional<QString> path = co_await m_dialogs.choose(panel);
    if (!path) co_return;
    const auto saved = co_await writeFile(*path, shown);
    setNotice(saved ? QStringLiteral("The report is saved.")
                    : QStringLiteral("The report could not be saved: ") + saved.error());
    if (saved) setReport({});
}

} // namespace corvane
