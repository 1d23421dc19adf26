#include "tests/faults/scene.h"

#include "app/day_keeper.h"
#include "tests/flows/mac.h"
#include "tests/story/story.h"

#include <QCoro/QCoroTask>
#include <QFile>

namespace corvane::test {

namespace {

void toEnd(Flow<> flow) { QCoro::waitFor(std::move(flow)); }

QString sign(bool good) { return good ? QStringLiteral("Yes.") : QStringLiteral("No."); }

QString silentOperation(const OperationRunner *operation)
{
    if (!operation->ended() || operation->succeeded() || !operation->failureText().isEmpty()) return {};
    return operation->title() + QStringLiteral(" failed without a sentence.");
}

QString silentRow(const CheckRows &rows)
{
    for (const CheckRow &row : rows) {
        if (row.detail.isEmpty()) return row.title + QStringLiteral(" says nothing.");
        if (row.state == CheckState::Unknown || row.state == CheckState::Running)
            return row.title + QStringLiteral(" has no result.");
    }
    return {};
}

QString without(const AppModel &model, const char *test)
{
    const bool told = !model.outcomes().value(QString::fromLatin1(test)).summary.isEmpty();
    return told ? QString() : QStringLiteral("There is no outcome of ") + QLatin1String(test);
}

QString firstOf(const QStringList &problems)
{
    for (const QString &problem : problems) {
        if (!problem.isEmpty()) return problem;
    }
    return {};
}

void install(AppModel &model)
{
    toEnd(model.runSystemChecks());
    model.installColimaAndDocker();
    Story::settle(model, [&model] {
        const OperationRunner *operation = model.installOp();
        return operation->ended() && (!operation->succeeded() || model.dockerWorks());
    });
    toEnd(model.testDocker());
}

QString missingAfterInstall(AppModel &model)
{
    const bool began = model.installOp()->ended() || !model.notice().isEmpty() || !model.hasBrew();
    return firstOf({began ? QString() : QStringLiteral("Nothing was installed, and nothing was said."),
                    silentOperation(model.installOp()), silentRow(model.systemChecks()), without(model, "docker")});
}

void start(AppModel &model)
{
    model.setPasswordInput(QStringLiteral("Fresh-Word_7.@+"));
    toEnd(model.startPihole());
    Story::settle(model);
    toEnd(model.runBlockingTest());
}

QString missingAfterStart(AppModel &model)
{
    const bool began = model.startOp()->ended() || !model.startMessage().isEmpty() || !model.notice().isEmpty();
    return firstOf({began ? QString() : QStringLiteral("Nothing was started, and nothing was said."),
                    silentOperation(model.startOp()), silentRow(model.piholeChecks()), without(model, "blocking"),
                    model.startOp()->succeeded() ? without(model, "pihole") : QString()});
}

void mendUdp(AppModel &model)
{
    toEnd(model.runPiholeTests(Wait::No));
    toEnd(model.fixUDPForwarding());
    Story::settle(model);
}

QString missingAfterMending(AppModel &model)
{
    const bool began = model.startOp()->ended() || !model.notice().isEmpty();
    return firstOf({began ? QString() : QStringLiteral("Nothing was restarted, and nothing was said."),
                    silentOperation(model.startOp()), silentRow(model.piholeChecks()), without(model, "pihole")});
}

void pointAtPihole(AppModel &model)
{
    toEnd(model.refreshStatus(Stats::Leave));
    toEnd(model.loadServices());
    toEnd(model.applyDNS());
}

QString missingAfterPointing(AppModel &model)
{
    if (model.dnsMessage().isEmpty()) return QStringLiteral("Nothing was said about the change.");
    return model.dnsMessage() == QStringLiteral("DNS changed.") ? without(model, "system") : QString();
}

void restore(AppModel &model)
{
    toEnd(model.refreshStatus(Stats::Include));
    toEnd(model.restoreOldSettings());
    toEnd(model.runAllTests());
}

QString missingAfterRestore(AppModel &model)
{
    const bool said = !model.notice().isEmpty() || !model.dnsMessage().isEmpty();
    return firstOf({said ? QString() : QStringLiteral("Nothing was said about the restore."),
                    silentRow(model.piholeChecks()), without(model, "pihole"), without(model, "blocking"),
                    without(model, "system")});
}

void proveABrowser(AppModel &model)
{
    model.setBrowserReadAllowed(true);
    toEnd(model.refreshStatus(Stats::Include));
    toEnd(model.scanBrowsers());
    toEnd(model.proveBrowser(QStringLiteral("safari")));
}

QString missingAfterProof(AppModel &model)
{
    const BrowserProof proof = model.browserProofs().value(QStringLiteral("safari"), BrowserProof::Running);
    return proof == BrowserProof::Running ? QStringLiteral("The test of a browser has no result.") : QString();
}

void liveADay(AppModel &model)
{
    model.showHistory(true);
    toEnd(model.refreshStatus(Stats::Include));
    toEnd(model.repair()->allow(QStringLiteral("doubleclick.net"), false));
    toEnd(model.pauseBlocking(PauseLength::OneHour));
    toEnd(model.loadBlockLists());
    toEnd(model.refreshStatus(Stats::Include));
    toEnd(model.resumeBlocking());
}

/// The picture of the day is there or it is told why not, and its record is whole.
QString missingOfTheDay(AppModel &model)
{
    QFile file(DayKeeper::path());
    const bool written = file.open(QIODevice::ReadOnly);
    if (written && !DayRecord::fromBytes(file.readAll())) return QStringLiteral("The record of the day is not whole.");
    if (model.day().record().spans().isEmpty()) return QStringLiteral("Nothing was recorded of the day.");
    const bool told = model.history() || !model.historyProblem().isEmpty() || !model.answering();
    return told ? QString() : QStringLiteral("The day is not shown, and nothing was said.");
}

QString missingAfterADay(AppModel &model)
{
    const bool permission = !model.repair()->message().isEmpty();
    const bool lists = !model.notes().value(QStringLiteral("lists")).toString().isEmpty();
    return firstOf({missingOfTheDay(model),
                    permission ? QString() : QStringLiteral("Nothing was said about the permission."),
                    lists ? QString() : QStringLiteral("Nothing was said about the lists."),
                    model.apiMessage().isEmpty() ? QStringLiteral("Nothing was said about the pause.") : QString()});
}

void comeBack(AppModel &model)
{
    model.comeback()->setStartsAgain(true);
    toEnd(model.refreshStatus(Stats::Leave));
    Mac::ctl(QStringLiteral("engine stop"));
    toEnd(model.refreshStatus(Stats::Leave));
    Story::settle(model, [&model] { return !model.comeback()->watched(); });
    toEnd(model.refreshStatus(Stats::Leave));
}

/// Whoever is without an answer of Pi-hole's reads what was done about it.
QString missingAfterComingBack(AppModel &model)
{
    const bool told = model.answering() || !model.usedByMac() || !model.comeback()->history().isEmpty() ||
                      !model.comeback()->news().isEmpty();
    return told ? QString() : QStringLiteral("Pi-hole is silent, and nothing was said.");
}

void report(AppModel &model)
{
    toEnd(model.refreshStatus(Stats::Include));
    toEnd(model.makeReport());
}

QString missingAfterReport(AppModel &model)
{
    return model.report().isEmpty() ? QStringLiteral("There is no report.") : QString();
}

} // namespace

namespace {

QList<Scene> story()
{
    return {
        {"installing", "homebrew", install, missingAfterInstall,
         [](AppModel &model) { return sign(model.dockerWorks()); }},
        {"starting", "engine", start, missingAfterStart,
         [](AppModel &model) { return sign(passed(model.outcomes(), QStringLiteral("pihole"))); }},
        {"mending UDP", "running", mendUdp, missingAfterMending,
         [](AppModel &model) { return sign(passed(model.outcomes(), QStringLiteral("pihole"))); }},
        {"pointing at Pi-hole", "running", pointAtPihole, missingAfterPointing,
         [](AppModel &model) { return sign(model.usedByMac()); }},
        {"restoring", "protected", restore, missingAfterRestore,
         [](AppModel &model) { return sign(model.usedByMac()); }},
        {"proving a browser", "protected", proveABrowser, missingAfterProof,
         [](AppModel &model) { return sign(!model.browsers().isEmpty()); }},
        {"living a day", "protected", liveADay, missingAfterADay,
         [](AppModel &model) { return sign(model.history().has_value()); }},
        {"coming back", "protected", comeBack, missingAfterComingBack}, // three tries for each outage
        {"making a report", "protected", report, missingAfterReport,
         [](AppModel &model) { return sign(!model.report().isEmpty()); }},
    };
}

} // namespace

const QList<Scene> &scenes()
{
    static const QList<Scene> all = story() + actionScenes();
    return all;
}

} // namespace corvane::test
