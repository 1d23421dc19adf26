#pragma once

#include "api/pihole_api.h"
#include "app/app_state.h"
#include "app/browser_rule_keeper.h"
#include "app/comeback.h"
#include "app/current_activities.h"
#include "app/day_keeper.h"
#include "app/flow.h"
#include "app/flow_choices.h"
#include "app/left_list_run.h"
#include "app/left_version.h"
#include "app/list_run.h"
#include "app/new_password.h"
#include "app/pause.h"
#include "app/pause_length.h"
#include "app/place.h"
#include "app/repair.h"
#include "app/surroundings.h"
#include "exec/operation_runner.h"
#include "runtime/deployed_container.h"

namespace corvane {

/// The one observable state behind every screen, with the flows that change it.
///
/// A flow is a coroutine; it ends quietly when the model goes away while it waits. The flows are in files of their own,
/// by subject.
///
/// A sentence that begins with the name of an `Activity` belongs to a flow that is under way as that activity, and that
/// does nothing while another one excludes it (app/activity.h). "Obstacles in `x`": the field x then says what is in
/// the way, unless that is the flow itself. "Quietly": nothing is said. Outcomes and notes are the entries of
/// `outcomes` and `notes` by that name. A question that the user answers with no ends the flow without a word.
///
/// The base has its full name because the views' linter finds its fields by no other.
class AppModel : public corvane::AppState {
    Q_OBJECT

    Q_PROPERTY(QString logText READ logText NOTIFY logTextChanged)
    Q_PROPERTY(corvane::OperationRunner *installOp READ installOp CONSTANT)
    Q_PROPERTY(corvane::OperationRunner *startOp READ startOp CONSTANT)
    Q_PROPERTY(corvane::OperationRunner *maintOp READ maintOp CONSTANT)
    Q_PROPERTY(corvane::OperationRunner *followOp READ followOp CONSTANT)
    Q_PROPERTY(corvane::ListRun *listRun READ listRun CONSTANT)
    Q_PROPERTY(corvane::Repair *repair READ repair CONSTANT)
    Q_PROPERTY(corvane::Comeback *comeback READ comeback CONSTANT)

public:
    [[nodiscard]] static const QStringList &stepTitles();

    /// Reads the settings and the login item and begins to read the keychain; nothing else runs before `bootstrap`.
    explicit AppModel(const Surroundings &surroundings);
    ~AppModel() override;

    // Start-up: app_model.cpp

    /// Finds the tools, sets up the API client and begins to poll. Ends only with the model.
    [[nodiscard]] Flow<> bootstrap();
    /// Looks for the tools and asks Docker's engine: `hasBrew`, `hasDocker`, `hasColima`, `dockerWorks`,
    /// `engineProblem`, `composeAvailable`.
    [[nodiscard]] Flow<> refreshTools();
    /// Gives the API client the port and the password now in force; no password while the keychain has not answered.
    void configureAPI();
    [[nodiscard]] PiholeAPI &api() { return m_api; }

    // The wizard's steps: app_model.cpp

    /// Shows the step, clamped to the steps there are, and counts it as `visited`.
    Q_INVOKABLE void go(int step);
    /// Whether what the step is for is there now; for the steps that test, whether their test passed in this session.
    Q_INVOKABLE [[nodiscard]] bool isStepDone(int step) const;

    // The live status: status.cpp

    /// Looks at the container, asks Pi-hole for a name and macOS for its resolvers: `containerState`, `answering`,
    /// `dnsTrouble`, `resolverReport`, `usedByMac`, `statusChecked`. With `Stats::Include` it ends in refreshStats()
    /// when Pi-hole answers. Asked for while a refresh is under way, it is done right after that one.
    [[nodiscard]] Flow<> refreshStatus(Stats stats);
    /// Reads `summary` and `blocking`. Why it could not is in `apiMessage`, which it empties when all is well.
    [[nodiscard]] Flow<> refreshStats();
    /// For a flow that has just started Pi-hole: looks every second until it answers or 10 seconds are over, with
    /// `starting` true until then, and ends in a refresh with counters. A later call ends an earlier one.
    [[nodiscard]] Flow<> refreshAfterStart();

    // Everyday actions: actions.cpp

    /// Opens `dashboardURL` in the default browser.
    void openDashboard();
    /// The title of the operation that brings Colima up.
    static constexpr QLatin1StringView kStartingColima{"Starting Colima"};
    static constexpr QLatin1StringView kColimaDidNotStart{"Colima did not start. See the log."};
    /// StartContainer, obstacles in `startMessage`: starts the container, and Colima in maintOp() first where Docker
    /// does not answer. When Colima is the reason why not, that is in `notice`.
    [[nodiscard]] Flow<> startPiholeNow(Place::Name from = Place::Dashboard);
    /// The second half of startPiholeNow(); marks nothing. Makes the container again where it is gone. Ends in
    /// refreshAfterStart(), or says why not in `startMessage`, with Docker's own words in the note "start".
    [[nodiscard]] Flow<> finishStart();
    /// Has Colima's own name service leave port 53 to the container. Returns who else holds it, as a sentence, or
    /// nothing.
    [[nodiscard]] Flow<QString> makeRoom();
    /// StopContainer, obstacles in `startMessage`, which also says why it did not stop.
    [[nodiscard]] Flow<> stopPihole(Place::Name from = Place::Dashboard);
    /// RestartContainer, obstacles in `startMessage`, which also says why it failed; ends in refreshAfterStart().
    [[nodiscard]] Flow<> restartPihole();
    /// What the menu offers: stopPihole() while the container runs, else startPiholeNow().
    [[nodiscard]] Flow<> toggleStartStop();

    // Blocking and its pauses: blocking.cpp. What came of them is in `blocking` and in one sentence in `apiMessage`.

    /// How the sentence about a pause begins.
    static constexpr QLatin1StringView kPaused{"Blocking is paused "};
    /// Switches blocking off; Pi-hole switches it on again by itself.
    [[nodiscard]] Flow<> pauseBlocking(PauseLength::Name length = PauseLength::FiveMinutes);
    [[nodiscard]] Flow<> pauseBlocking(std::chrono::seconds length);
    static constexpr QLatin1StringView kResumed{"Blocking is back on."};
    [[nodiscard]] Flow<> resumeBlocking();
    /// Pauses for five minutes where Pi-hole blocks, else resumes; neither where Pi-hole does not say which.
    [[nodiscard]] Flow<> togglePause();
    /// Reads `blocking` alone; says nothing when it cannot.
    [[nodiscard]] Flow<> refreshBlocking();

    // Pi-hole's block lists: block_lists.cpp

    /// LoadLists, obstacles in `apiMessage`: has Pi-hole download its block lists. Its progress is in listRun(), how it
    /// ended in the note "lists".
    [[nodiscard]] Flow<> loadBlockLists();

    // The last 24 hours: history.cpp

    /// From now on each refresh also reads `history` and `topBlocked`, or no longer; why not is in `historyProblem`.
    void showHistory(bool shown);
    [[nodiscard]] DayKeeper &day() { return m_day; }

    // The container's log: logs.cpp

    /// What the log panel shows: the lines that were loaded, or those that are being followed.
    [[nodiscard]] QString logText() const;
    /// LoadLogs, quietly: reads the newest 300 lines into logText(), or why there are none. Nothing while `following`.
    [[nodiscard]] Flow<> loadLogs();
    /// Follows the log in followOp(), or no longer; `following` says whether. Why it could not is in `notice`.
    void setFollowing(bool follow);
    /// Asks where to and writes logText() there. Why it could not is in `apiMessage`.
    [[nodiscard]] Flow<> saveLogs();

    // The checks of this Mac: system_checks.cpp

    /// Checks, quietly: reads tools, container and ports into `systemChecks` and `portReports`.
    [[nodiscard]] Flow<> runSystemChecks();

    // Installing and starting: start_flows.cpp

    /// Install, obstacles in `notice`: installs and starts both in installOp(), then checks this Mac again where it was
    /// checked before. Without Homebrew it opens Homebrew's page.
    void installColimaAndDocker();
    /// Autostart, obstacles in `notice`: switches Colima's login service in installOp() without a question, and waits
    /// for Docker. Nothing without Homebrew or Colima. `autostartColima` stays as it is, unless macOS refuses.
    void applyAutostart(bool enable);
    /// StartColima, obstacles in `notice`: starts Colima in installOp() and looks for the tools again.
    void startColimaOnly();
    /// DockerTest, quietly: looks for the tools; the outcome "docker".
    [[nodiscard]] Flow<> testDocker();
    /// Autostart, obstacles in `notice`: keeps the wish in `autostartColima` and carries it out as applyAutostart()
    /// does, after a question where Docker answers. Takes the wish back when it may not begin or the user says no. Only
    /// keeps it while Homebrew or Colima is missing or installOp() runs.
    [[nodiscard]] Flow<> changeAutostart(bool on);
    [[nodiscard]] static QString generatePassword();
    /// The `startMessage` of a start that another program prevents.
    static constexpr QLatin1StringView kPortTaken{"A port that Pi-hole needs is taken. See what holds it below."};
    /// StartPihole, obstacles in `startMessage`: makes the container in startOp() with `passwordInput`, which becomes
    /// the `adminPassword`, and ends in runPiholeTests(). `startMessage` also says why not.
    [[nodiscard]] Flow<> startPihole();

    // Proving that Pi-hole works: pihole_tests.cpp

    /// PiholeTests: tests container, admin page and DNS into `piholeChecks`, `udpProblem`, `tcpWorks` and
    /// `grpcFlagSupported`; the outcome and the note "pihole". With `Wait::ForStart` a container that is still starting
    /// has 90 seconds. A later run ends an earlier one. One that fails while Pi-hole is changed begins anew.
    [[nodiscard]] Flow<> runPiholeTests(Wait wait);
    /// UdpFix, obstacles in `notice`: after a question restarts Colima in startOp() so that it forwards UDP, then tests
    /// Pi-hole.
    [[nodiscard]] Flow<> fixUDPForwarding();
    /// The Pi-hole tests, the blocking test and the system DNS test, one after another.
    [[nodiscard]] Flow<> runAllTests();

    // Proving that Pi-hole blocks: blocking_test.cpp

    /// BlockingTest, quietly: `blockingTest`; the outcome and the note "blocking".
    [[nodiscard]] Flow<> runBlockingTest();

    // This Mac's DNS: dns_flows.cpp

    /// LoadServices: reads `services`, and selects the one with the internet connection where none is selected.
    [[nodiscard]] Flow<> loadServices();
    /// ApplyDns, obstacles in `dnsMessage`, which also has its outcome: after a question saves the old servers, points
    /// `selectedServices` at Pi-hole and proves it as runSystemTest() does. Nothing changes while Pi-hole does not
    /// answer.
    [[nodiscard]] Flow<> applyDNS();
    /// SystemTest, quietly: looks names up as every program does and looks for them in Pi-hole's log. `resolverReport`,
    /// `systemTestDetail`; the outcome and the note "system".
    [[nodiscard]] Flow<> runSystemTest();
    static constexpr QLatin1StringView kRestored{"Your old DNS settings are back."};
    /// RestoreDns, obstacles in `dnsMessage`: after a question puts the saved servers back. Says so in `notice`, or in
    /// `dnsMessage` why not; there also what it had to leave out.
    [[nodiscard]] Flow<> restoreOldSettings(Place::Name from = Place::SetUp);
    [[nodiscard]] bool restoresOldSettings() const; ///< Or asks about it.
    /// Publishes in `restoreScript` where the script is that restores without Corvane; writes it where it is missing.
    [[nodiscard]] Flow<> showRestoreScript();

    // Browsers: browser_test.cpp

    /// ScanBrowsers, quietly: reads the browsers' settings into `browsers`. Nothing until the user has allowed it.
    [[nodiscard]] Flow<> scanBrowsers();
    /// Opens the settings of one of the `browsers`; nothing for any other name, and no word when it does not work.
    [[nodiscard]] Flow<> openBrowserSettings(QString id);
    /// BrowserTest, quietly: opens a made-up name in the default browser and looks for it in Pi-hole's log for 20
    /// seconds. `browserTestDetail`; the outcome and the note "browser".
    [[nodiscard]] Flow<> runBrowserTest();

    // Proving one browser: browser_proof.cpp

    /// BrowserProof, quietly: opens two made-up names in this browser, ten seconds apart, and looks for both in
    /// Pi-hole's log. What it finds is in `browserProofs`.
    [[nodiscard]] Flow<> proveBrowser(QString id);

    // Saving and restoring Pi-hole's settings: teleporter.cpp

    /// ExportBackup, obstacles in `notice`, which also has its outcome: reads Pi-hole's settings, asks where to, and
    /// writes them there.
    [[nodiscard]] Flow<> exportBackup();
    /// ImportBackup, obstacles in `notice`, which also has its outcome: asks which archive, gives it to Pi-hole after a
    /// question, and ends in refreshAfterStart().
    [[nodiscard]] Flow<> importBackup();

    // A report for a helper: report.cpp

    /// MakeReport, quietly: publishes in `report` what this Mac, its tools and Corvane look like, without what names a
    /// person, a network or a site.
    [[nodiscard]] Flow<> makeReport();
    /// Asks where to and writes `report` there, which is empty then; `notice` says what came of it.
    [[nodiscard]] Flow<> saveReport();

    // Maintenance: maintenance.cpp

    /// CheckForUpdates, quietly: asks the release feed. `latestTag` when there is a newer version; `updateMessage`.
    [[nodiscard]] Flow<> checkForUpdates();
    /// Update, obstacles in `updateMessage`, which also has its outcome: after a question saves a backup, makes the
    /// container of `latestTag` in maintOp(), and tests it. Goes back to the old version when it cannot. Nothing
    /// without `latestTag`.
    [[nodiscard]] Flow<> performUpdate();
    /// Sets `launchAtLogin` to what macOS reports afterwards; why it could not is in `notice`.
    void setLaunchAtLogin(bool on);

    // Removing Pi-hole: removal.cpp

    /// Removal, obstacles in `notice`, which also has its outcome: after a question restores the old servers, removes
    /// container and volumes, forgets what was known and begins the wizard again. Removes nothing where the servers
    /// cannot be restored.
    [[nodiscard]] Flow<> removePihole();

    // The admin page's port: web_port.cpp

    /// PortChange, obstacles in `notice`: makes the container at the port in maintOp(); goes back to the old port, and
    /// says why in `notice`, when it cannot. Without a container it only sets `webPort`. Nothing where it has the port
    /// already.
    [[nodiscard]] Flow<> changeWebPort(int port);

    // What an end in the middle leaves behind: recovery.cpp

    /// Stops what is under way; nothing begins any more.
    void stopEverything();
    /// The same, and waits, but no longer than the limit, until what was being exchanged is put back.
    [[nodiscard]] Flow<> windDown(Clock::Duration limit);
    /// PutRight, quietly: compares pinned version, port and files with the container that was last seen, puts right
    /// what was cut off, and says what still differs in the note "version" and in `wayBack`. Nothing while
    /// the container is as it was last compared.
    [[nodiscard]] Flow<> putRight();
    /// BringBack, obstacles in `updateMessage`, which also has its outcome: makes the container of the version in
    /// `wayBack` in maintOp(); its image is still there. Nothing without `wayBack`.
    [[nodiscard]] Flow<> bringBack();

    [[nodiscard]] OperationRunner *installOp() { return &m_installOp; }
    [[nodiscard]] OperationRunner *startOp() { return &m_startOp; }
    [[nodiscard]] OperationRunner *maintOp() { return &m_maintOp; }
    [[nodiscard]] OperationRunner *followOp() { return &m_followOp; }
    [[nodiscard]] ListRun *listRun() { return &m_listRun; }
    [[nodiscard]] Repair *repair() { return &m_repair; }
    [[nodiscard]] Comeback *comeback() { return &m_comeback; }
    /// Whether a set-up or maintenance operation is under way; following the log is none.
    [[nodiscard]] bool operationRunning() const;

Q_SIGNALS:
    void logTextChanged();

private:
    /// Whether the activity may begin. Says with `say` what is in its way, unless that is itself.
    [[nodiscard]] bool mayBegin(Activity activity, void (AppModel::*say)(const QString &));
    void recordOutcome(const QString &test, bool passed, const QString &summary);
    /// Shows a line beside what the key names, or takes it away.
    void setNote(const QString &key, const QString &text);
    [[nodiscard]] Flow<> poll();
    void followListsRun();
    [[nodiscard]] Flow<> look(Stats stats);
    void followOutage(bool undisturbed);
    [[nodiscard]] Flow<> comeBack();
    [[nodiscard]] Flow<> tryToComeBack();
    void noteProtection();
    [[nodiscard]] Flow<> readHistory(Stats stats);
    [[nodiscard]] Flow<> readTopBlocked(bool counted, bool newest);
    void tellApi(const QString &about, const std::optional<PiholeAPIError> &error);
    void tellStart(const QString &message, const QString &note);
    [[nodiscard]] bool mayCount() const;
    [[nodiscard]] Flow<bool> answersNow();
    void publishLook(bool answers, DnsTrouble trouble, const ResolverReport &report);
    void endWatch();
    [[nodiscard]] Flow<bool> bringDockerUp();
    [[nodiscard]] Flow<> control(Activity activity, QString verb, Place::Name from);
    [[nodiscard]] Flow<> afterControl(CommandResult result, Activity done);
    [[nodiscard]] std::optional<std::chrono::seconds> restOfPause(const PiholeBlocking &state) const;
    [[nodiscard]] Flow<> pause(std::chrono::seconds length, PauseEnd endedBy, QString sentence);
    [[nodiscard]] Flow<> keepPauseShort();
    [[nodiscard]] Flow<bool> runLists();
    [[nodiscard]] Flow<bool> awaitNewerLists(std::optional<qint64> before, Clock::Duration limit);
    [[nodiscard]] Flow<> followLeftListRun();
    /// Pi-hole's settings as an archive. A pause is lifted for it: a restore would leave blocking off for
    /// good.
    [[nodiscard]] Flow<std::expected<PiholeArchive, PiholeAPIError>> downloadSettings();
    void follow();
    void onFollowerEnded();

    [[nodiscard]] Flow<> install();
    [[nodiscard]] Flow<> changeLoginService(bool enable);
    [[nodiscard]] Flow<> switchAutostart(bool enable);
    [[nodiscard]] Flow<> startColima();
    [[nodiscard]] Flow<> waitForDocker();
    [[nodiscard]] Flow<> startColimaWithoutService();
    [[nodiscard]] Flow<bool> piholeCanStart();
    [[nodiscard]] Flow<bool> startContainer(QString password);
    [[nodiscard]] Flow<bool> keepPassword(QString password);

    // `run` belongs to the flow that waits.
    [[nodiscard]] Flow<bool> testPihole(const ActivityMark *run, HealthPatience patience);
    void showPiholeCheck(int row, CheckState state, const QString &detail);
    [[nodiscard]] Flow<bool> testContainer(const ActivityMark *run, HealthPatience patience);
    [[nodiscard]] Flow<bool> testAdminPage(const ActivityMark *run, int attempts);
    [[nodiscard]] Flow<bool> testDns(const ActivityMark *run, int attempts, bool containerPassed);
    [[nodiscard]] Flow<> explainSilentDns(const ActivityMark *run);
    [[nodiscard]] Flow<> explainReply(const ActivityMark *run, DigResult reply);
    [[nodiscard]] Flow<QString> whyBlockingFailed(BlockingTestResult result, DigResult allowed,
                                                  std::optional<PiholeSummary> counters);
    [[nodiscard]] Flow<QString> blockedInAnotherWay();
    [[nodiscard]] Flow<> explainMissingNames(const ActivityMark *run, QString key, bool missing);

    [[nodiscard]] Flow<> proveLookups();
    [[nodiscard]] Flow<QString> findInLog(QStringList names, QSet<QString> *found);

    [[nodiscard]] Flow<> keepBrowserRule();
    [[nodiscard]] Flow<> putBrowserRule();
    [[nodiscard]] Flow<> dropBrowserRule();
    void followBrowserRule();
    [[nodiscard]] Flow<> askAboutFirefox();
    void showBrowserProof(const QString &id, BrowserProof proof);
    [[nodiscard]] Flow<BrowserProof> findInBrowserLog(const ActivityMark *run, QString early, QString late);

    [[nodiscard]] Flow<QString> saveBackupBefore(QString newTag);
    [[nodiscard]] Flow<bool> runUpdate(QString newTag);
    [[nodiscard]] Flow<bool> exchangeVersion(QString newTag, CommandSteps steps);
    [[nodiscard]] Flow<QString> pin(QString tag);
    [[nodiscard]] QCoro::Task<std::expected<void, QString>> writeFiles() const;
    [[nodiscard]] Flow<> lookAfterExchange(bool made);
    void tellOfRollback(const QString &unwritten);
    [[nodiscard]] Flow<> movePihole(int port, CommandSteps steps);
    [[nodiscard]] Flow<> putFilesRight();
    [[nodiscard]] bool judge(const DeployedContainer &deployed);
    [[nodiscard]] bool judgeNewVersion();
    void findWayBack();
    [[nodiscard]] Flow<QString> remake(QString tag);
    [[nodiscard]] Flow<> startAnew();
    [[nodiscard]] Flow<> removeContainer();
    void forgetPihole();

    Dialogs &m_dialogs;
    Workspace &m_workspace;
    LoginItem &m_loginItem;
    Clock &m_clock;
    QUrl m_releaseFeed;

    PiholeAPI m_api;
    BrowserRuleKeeper m_browserRuleKeeper{m_api, m_clock};
    OperationRunner m_installOp;
    OperationRunner m_startOp;
    OperationRunner m_maintOp;
    OperationRunner m_followOp;
    CurrentActivities m_activities;
    Pause m_pause{m_settings};
    LeftVersion m_left{m_settings};
    NewPassword m_newPassword{m_settings};
    LeftListRun m_leftListRun{m_settings};
    Comeback m_comeback{m_settings, m_clock};
    /// What pin, port and files were last compared with.
    std::optional<ContainerState> m_compared;
    std::optional<qint64> m_listsRun;
    ListRun m_listRun;
    Repair m_repair{m_api, m_clock, m_activities};
    DayKeeper m_day;
    bool m_historyShown = false;
    bool m_historyUnread = false;
    bool m_topBlockedIsNext = false;
    PiholeTopBlocked m_topCounted;
    QList<PiholeQuery> m_newestBlocked;
    bool m_refreshing = false;
    std::optional<Stats> m_refreshNext;
    int m_newestWatch = 0;
    int m_oldAnswers = 0;
    int m_toolSearches = 0;
    int m_newestToolsFound = 0;
    QString m_loadedLog;
    bool m_showsFollowedLog = false;
};

} // namespace corvane
