#include "tests/faults/user_actions.h"

#include "app/disturbance.h"
#include "dns/dns_backup.h"
#include "tests/flows/saved_files.h"

#include <QCoro/QCoroTask>
#include <QDir>

namespace corvane::test {

namespace {

using Said = std::function<QString(const AppModel &)>;
using Act = std::function<void(AppModel &)>;

Flow<> nothingToWaitFor(AppModel & /*model*/) { co_return; }

/// What has no flow of its own to wait for: its end is that of the model's activities.
std::function<Flow<>(AppModel &)> started(Act act)
{
    return [act = std::move(act)](AppModel &model) {
        act(model);
        return nothingToWaitFor(model);
    };
}

const Said kNotice = [](const AppModel &model) { return model.notice(); };
const Said kStart = [](const AppModel &model) { return model.startMessage(); };
const Said kUpdate = [](const AppModel &model) { return model.updateMessage(); };
const Said kDns = [](const AppModel &model) {
    return model.dnsMessage().isEmpty() ? model.notice() : model.dnsMessage();
};
const Said kApi = [](const AppModel &model) { return model.apiMessage(); };

Said outcomeOf(const char *test)
{
    return [key = QString::fromLatin1(test)](const AppModel &model) { return model.outcomes().value(key).summary; };
}

Act forgetOutcome(const char *test)
{
    return [key = QString::fromLatin1(test)](AppModel &model) {
        Outcomes outcomes = model.outcomes();
        outcomes.remove(key);
        model.setOutcomes(outcomes);
        auto notes = model.notes();
        notes.remove(key);
        model.setNotes(notes);
        model.setSystemTestDetail({});
        model.setBrowserTestDetail({});
    };
}

/// Of a test under which Pi-hole was changed: that, in the place of its verdict.
Said outcomeOrChange(const char *test, const Said &place)
{
    return [outcome = outcomeOf(test), place](const AppModel &model) {
        const QString summary = outcome(model);
        const bool disturbed = summary.isEmpty() && place(model) == Disturbance::kSentence;
        return disturbed ? QString(Disturbance::kSentence) : summary;
    };
}

QString noteOnBlocking(const AppModel &model) { return model.notes().value(QStringLiteral("blocking")).toString(); }
QString systemDetail(const AppModel &model) { return model.systemTestDetail(); }
QString browserDetail(const AppModel &model) { return model.browserTestDetail(); }

/// An operation says how it went in its own box.
Said operationOr(OperationRunner *(AppModel::*runner)(), const Said &field)
{
    return [runner, field](const AppModel &model) {
        const QString text = field(model);
        const OperationRunner *operation = (const_cast<AppModel &>(model).*runner)();
        if (!text.isEmpty() || !operation->ended()) return text;
        return operation->succeeded() ? QStringLiteral("Done.") : operation->failureText();
    };
}

/// The state of Pi-hole is what the user sees of a start or a stop that went well.
QString startOrState(const AppModel &model)
{
    return model.startMessage().isEmpty() ? model.notice() + model.statusLine() : model.startMessage();
}

/// Where there is nothing that could start at login, the switch itself is all that the user sees change.
QString autostartText(const AppModel &model)
{
    const QString text = operationOr(&AppModel::installOp, kNotice)(model);
    return text.isEmpty() && !(model.hasBrew() && model.hasColima()) ? QStringLiteral("Kept for later.") : text;
}

QString permissionText(const AppModel &model) { return const_cast<AppModel &>(model).repair()->message(); }

QString rowsText(const CheckRows &rows)
{
    QString text;
    for (const CheckRow &row : rows) {
        if (row.state == CheckState::Unknown || row.state == CheckState::Running || row.detail.isEmpty()) return {};
        text += row.detail;
    }
    return text;
}

QString listsText(const AppModel &model)
{
    const QString note = model.notes().value(QStringLiteral("lists")).toString();
    return model.apiMessage().startsWith(QStringLiteral("Not now")) ? model.apiMessage() : note;
}

QString proofText(const AppModel &model)
{
    const auto proofs = model.browserProofs();
    const auto found = proofs.find(QStringLiteral("brave"));
    if (found == proofs.end() || *found == BrowserProof::Running) return {};
    return QStringLiteral("Proof %1").arg(static_cast<int>(*found));
}

QString homeFile(const char *name) { return QDir::home().filePath(QString::fromLatin1(name)); }

void forgetMessages(AppModel &model)
{
    model.setNotice({});
    model.setStartMessage({});
    model.setUpdateMessage({});
    model.setDnsMessage({});
    model.setApiMessage({});
    model.repair()->setMessage({});
}

QList<UserAction> tests()
{
    return {
        {"runSystemChecks",
         Activity::Checks,
         [](AppModel &model) { return model.runSystemChecks(); },
         [](const AppModel &model) { return rowsText(model.systemChecks()); },
         true,
         {},
         [](AppModel &model) { model.setSystemChecks({}); }},
        {"testDocker",
         Activity::DockerTest,
         [](AppModel &model) { return model.testDocker(); },
         outcomeOf("docker"),
         true,
         {},
         forgetOutcome("docker")},
        {"runPiholeTests",
         Activity::PiholeTests,
         [](AppModel &model) { return model.runPiholeTests(Wait::No); },
         outcomeOf("pihole"),
         true,
         {},
         forgetOutcome("pihole")},
        {"runBlockingTest",
         Activity::BlockingTest,
         [](AppModel &model) { return model.runBlockingTest(); },
         outcomeOrChange("blocking", noteOnBlocking),
         true,
         {},
         forgetOutcome("blocking")},
        {"runSystemTest",
         Activity::SystemTest,
         [](AppModel &model) { return model.runSystemTest(); },
         outcomeOrChange("system", systemDetail),
         true,
         {},
         forgetOutcome("system")},
        {"runAllTests",
         Activity::PiholeTests,
         [](AppModel &model) { return model.runAllTests(); },
         outcomeOf("pihole"),
         true,
         {},
         forgetOutcome("pihole")},
        {"runBrowserTest",
         Activity::BrowserTest,
         [](AppModel &model) { return model.runBrowserTest(); },
         outcomeOrChange("browser", browserDetail),
         true,
         {},
         forgetOutcome("browser")},
        {"scanBrowsers",
         Activity::ScanBrowsers,
         [](AppModel &model) { return model.scanBrowsers(); },
         [](const AppModel &model) { return model.browsers().isEmpty() ? QString() : QStringLiteral("Found."); },
         true,
         {},
         {}},
        {"proveBrowser",
         Activity::BrowserProof,
         [](AppModel &model) { return model.proveBrowser(QStringLiteral("brave")); },
         proofText,
         true,
         {},
         [](AppModel &model) { model.setBrowserProofs({}); }},
        {"openBrowserSettings",
         std::nullopt,
         [](AppModel &model) { return model.openBrowserSettings(QStringLiteral("brave")); },
         {}},
    };
}

QList<UserAction> settingUp()
{
    return {
        {"loadServices", Activity::LoadServices, [](AppModel &model) { return model.loadServices(); },
         [](const AppModel &model) {
             return model.services().isEmpty() ? QStringLiteral("None.") : QStringLiteral("Read.");
         },
         true},
        {"applyDNS", Activity::ApplyDns, [](AppModel &model) { return model.applyDNS(); }, kDns},
        {"restoreOldSettings", Activity::RestoreDns, [](AppModel &model) { return model.restoreOldSettings(); }, kDns},
        {"installColimaAndDocker", Activity::Install, started([](AppModel &model) { model.installColimaAndDocker(); }),
         operationOr(&AppModel::installOp, kNotice)},
        {"startColimaOnly", Activity::StartColima, started([](AppModel &model) { model.startColimaOnly(); }),
         operationOr(&AppModel::installOp, kNotice)},
        {"changeAutostart", Activity::Autostart,
         [](AppModel &model) { return model.changeAutostart(!model.autostartColima()); }, autostartText},
        {"startPihole", Activity::StartPihole, [](AppModel &model) { return model.startPihole(); },
         operationOr(&AppModel::startOp, kStart)},
        {"fixUDPForwarding", Activity::UdpFix, [](AppModel &model) { return model.fixUDPForwarding(); },
         operationOr(&AppModel::startOp, kNotice)},
    };
}

QList<UserAction> everyday()
{
    return {
        {"startPiholeNow", Activity::StartContainer, [](AppModel &model) { return model.startPiholeNow(); },
         startOrState},
        {"stopPihole", Activity::StopContainer, [](AppModel &model) { return model.stopPihole(); }, startOrState},
        {"restartPihole", Activity::RestartContainer, [](AppModel &model) { return model.restartPihole(); },
         startOrState},
        {"toggleStartStop", Activity::StopContainer, [](AppModel &model) { return model.toggleStartStop(); },
         startOrState},
        {"togglePause", std::nullopt, [](AppModel &model) { return model.togglePause(); }, kApi},
        {"pauseFor", std::nullopt, [](AppModel &model) { return model.pauseBlocking(PauseLength::OneHour); }, kApi},
        {"loadBlockLists", Activity::LoadLists, [](AppModel &model) { return model.loadBlockLists(); }, listsText},
        {"allow", Activity::ChangeRules,
         [](AppModel &model) { return model.repair()->allow(QStringLiteral("doubleclick.net"), false); },
         permissionText},
        {"takeBack", Activity::ChangeRules,
         [](AppModel &model) { return model.repair()->takeBack(QStringLiteral("doubleclick.net")); }, permissionText},
        {"loadLogs", Activity::LoadLogs, [](AppModel &model) { return model.loadLogs(); },
         [](const AppModel &model) { return model.logText(); }, true},
        {"saveLogs", std::nullopt, [](AppModel &model) { return model.saveLogs(); }, {}},
        {"makeReport",
         Activity::MakeReport,
         [](AppModel &model) { return model.makeReport(); },
         [](const AppModel &model) { return model.report().isEmpty() ? QString() : QStringLiteral("Made."); },
         true,
         {},
         [](AppModel &model) { model.setReport({}); }},
        {"saveReport", std::nullopt, [](AppModel &model) { return model.saveReport(); }, kNotice},
    };
}

QList<UserAction> maintenance()
{
    return {
        {"checkForUpdates", Activity::CheckForUpdates, [](AppModel &model) { return model.checkForUpdates(); }, kUpdate,
         true},
        {"performUpdate", Activity::Update, [](AppModel &model) { return model.performUpdate(); }, kUpdate, false,
         [](AppModel &model) { model.setLatestTag(QStringLiteral("2026.10.0")); }},
        {"bringBack", Activity::BringBack, [](AppModel &model) { return model.bringBack(); }, kUpdate, false,
         [](AppModel &model) { model.setWayBack(model.pinnedTag()); }},
        {"changeWebPort", Activity::PortChange,
         [](AppModel &model) { return model.changeWebPort(model.webPort() == 8083 ? 8080 : 8083); },
         operationOr(&AppModel::maintOp, kNotice)},
        {"exportBackup", Activity::ExportBackup, [](AppModel &model) { return model.exportBackup(); }, kNotice},
        {"importBackup", Activity::ImportBackup, [](AppModel &model) { return model.importBackup(); }, kNotice},
        {"removePihole", Activity::Removal, [](AppModel &model) { return model.removePihole(); }, kNotice},
        {"setLaunchAtLogin", std::nullopt, started([](AppModel &model) { model.setLaunchAtLogin(true); }), {}},
        {"setStartsAgain", std::nullopt, started([](AppModel &model) { model.comeback()->setStartsAgain(true); }), {}},
    };
}

} // namespace

const QList<UserAction> &userActions()
{
    static const QList<UserAction> all = [] {
        QList<UserAction> found = tests() + settingUp() + everyday() + maintenance();
        for (UserAction &action : found) {
            action.forget = [also = action.forget](AppModel &model) {
                forgetMessages(model);
                if (also) also(model);
            };
            action.turnsRound = QLatin1StringView(action.name).startsWith(QLatin1StringView("toggle"));
        }
        return found;
    }();
    return all;
}

const QStringList &commandsThatOnlyShow()
{
    static const QStringList names =
        QStringLiteral(
            "openDashboard watchBlocked showRestoreScript hideBanner dismissNotice toggleWizard follow copyLog go "
            "checksAppeared installAppeared piholeAppeared dnsAppeared browsersAppeared openHomebrew generatePassword "
            "copyPasswordInput copyAdminPassword select allowBrowserRead leaveWizard dropReport say")
            .split(u' ');
    return names;
}

void prepareForActions(AppModel &model, User &user)
{
    Mac::ctl(QStringLiteral("pihole log-delay 0"));
    Mac::ctl(QStringLiteral("pihole login-limit 100000"));
    Mac::ctl(QStringLiteral("app add com.brave.Browser"));
    EXPECT_TRUE(DNSBackup::store({{QStringLiteral("Wi-Fi"), {QStringLiteral("9.9.9.9")}}}));
    write(homeFile("Library/Application Support/BraveSoftware/Brave-Browser/Local State"), "{}");
    QCoro::waitFor(model.refreshStatus(Stats::Include));
    QCoro::waitFor(model.loadServices());
    model.setBrowserReadAllowed(true);
    QCoro::waitFor(model.scanBrowsers());
    user.picks(homeFile("mine.zip"));
    QCoro::waitFor(model.exportBackup());
    EXPECT_TEXT(model.notice(), "Backup saved to mine.zip.");
    model.setPasswordInput(model.adminPassword());
    model.setLatestTag(QStringLiteral("2026.10.0"));
    model.setWizardFinished(true);
    forgetMessages(model);
}

} // namespace corvane::test
