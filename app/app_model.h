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
/// A flow is a coroutine; it ends quietly when the model goes away while it waits. The flows stand in files of their
/// own, by subject. The base has its full name because the views' linter finds its fields by no other.
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
    static constexpr int kStepCount = 8;
    [[nodiscard]] static const QStringList &stepTitles();

    /// Reads the settings and the login item and begins to read the keychain; nothing else runs before `bootstrap`.
    explicit AppModel(const Surroundings &surroundings);
    ~AppModel() override;

    // Start-up: app_model.cpp

    /// Finds the tools, sets up the API client and begins to poll.
    [[nodiscard]] Flow<> bootstrap();
    [[nodiscard]] Flow<> refreshTools();
    /// Gives the API client the port and the password now in force; no password while the keychain has not answered.
    void configureAPI();
    [[nodiscard]] PiholeAPI &api() { return m_api; }

    // The wizard's steps: app_model.cpp

    /// Shows the step, clamped to the steps there are.
    Q_INVOKABLE void go(int step);
    Q_INVOKABLE [[nodiscard]] bool isStepDone(int step) const;

    // The live status: status.cpp

    /// Asked for while a refresh is under way, it is done right after that one.
    [[nodiscard]] Flow<> refreshStatus(Stats stats);
    [[nodiscard]] Flow<> refreshStats();
    /// What follows whatever has just started Pi-hole anew: looks every second until it answers or 10 seconds are over,
    /// says meanwhile that it is starting, and ends in a refresh with counters.
    [[nodiscard]] Flow<> refreshAfterStart();

    // Everyday actions: actions.cpp

    void openDashboard();
    /// The title of the operation that brings Colima up.
    static constexpr QLatin1StringView kStartingColima{"Starting Colima"};
    static constexpr QLatin1StringView kColimaDidNotStart{"Colima did not start. See the log."};
    [[nodiscard]] Flow<> startPiholeNow(Place::Name from = Place::Dashboard);
    [[nodiscard]] Flow<> finishStart();
    [[nodiscard]] Flow<QString> makeRoom();
    [[nodiscard]] Flow<> stopPihole(Place::Name from = Place::Dashboard);
    [[nodiscard]] Flow<> restartPihole();
    /// What the menu offers.
    [[nodiscard]] Flow<> toggleStartStop();

    // Blocking and its pauses: blocking.cpp

    /// How the sentence begins that tells of a pause, in `apiMessage`.
    static constexpr QLatin1StringView kPaused{"Blocking is paused "};
    [[nodiscard]] Flow<> pauseBlocking(PauseLength::Name length = PauseLength::FiveMinutes);
    [[nodiscard]] Flow<> pauseBlocking(std::chrono::seconds length);
    static constexpr QLatin1StringView kResumed{"Blocking is back on."};
    [[nodiscard]] Flow<> resumeBlocking();
    [[nodiscard]] Flow<> togglePause();
    /// Asks Pi-hole what is left of a pause.
    [[nodiscard]] Flow<> refreshBlocking();

    // Pi-hole's block lists: block_lists.cpp

    /// Loads Pi-hole's block lists anew.
    [[nodiscard]] Flow<> loadBlockLists();

    // The last 24 hours: history.cpp

    /// Reads Pi-hole's history from now on with each refresh, or no longer.
    void showHistory(bool shown);
    [[nodiscard]] DayKeeper &day() { return m_day; }

    // The container's log: logs.cpp

    /// What the log panel shows: the lines that were loaded, or those that are being followed.
    [[nodiscard]] QString logText() const;
    [[nodiscard]] Flow<> loadLogs();
    void setFollowing(bool follow);
    [[nodiscard]] Flow<> saveLogs();

    // The checks of this Mac: system_checks.cpp

    [[nodiscard]] Flow<> runSystemChecks();

    // Installing and starting: start_flows.cpp

    void installColimaAndDocker();
    void applyAutostart(bool enable);
    void startColimaOnly();
    [[nodiscard]] Flow<> testDocker();
    [[nodiscard]] Flow<> changeAutostart(bool on);
    [[nodiscard]] static QString generatePassword();
    /// The `startMessage` of a start that another program prevents.
    static constexpr QLatin1StringView kPortTaken{"A port that Pi-hole needs is taken. See what holds it below."};
    [[nodiscard]] Flow<> startPihole();

    // Proving that Pi-hole works: pihole_tests.cpp

    /// `Wait::ForStart`: a container that is still starting has 90 seconds.
    [[nodiscard]] Flow<> runPiholeTests(Wait wait);
    [[nodiscard]] Flow<> fixUDPForwarding();
    /// The Pi-hole tests, the blocking test and the system DNS test, one after another.
    [[nodiscard]] Flow<> runAllTests();

    // Proving that Pi-hole blocks: blocking_test.cpp

    [[nodiscard]] Flow<> runBlockingTest();

    // This Mac's DNS: dns_flows.cpp

    [[nodiscard]] Flow<> loadServices();
    [[nodiscard]] Flow<> applyDNS();
    [[nodiscard]] Flow<> runSystemTest();
    static constexpr QLatin1StringView kRestored{"Your old DNS settings are back."};
    [[nodiscard]] Flow<> restoreOldSettings(Place::Name from = Place::SetUp);
    /// Publishes where the script stands that restores without Corvane; it is written where it is missing.
    [[nodiscard]] Flow<> showRestoreScript();

    // Browsers: browser_test.cpp

    /// Reads the browsers' settings once the user has allowed it.
    [[nodiscard]] Flow<> scanBrowsers();
    [[nodiscard]] Flow<> openBrowserSettings(QString id);
    [[nodiscard]] Flow<> runBrowserTest();

    // Proving one browser: browser_proof.cpp

    /// Opens two made-up names in this browser, ten seconds apart, and looks for both in Pi-hole's log. What it finds
    /// is in `browserProofs`.
    [[nodiscard]] Flow<> proveBrowser(QString id);

    // Saving and restoring Pi-hole's settings: teleporter.cpp

    [[nodiscard]] Flow<> exportBackup();
    [[nodiscard]] Flow<> importBackup();

    // A report for whoever helps: report.cpp

    /// Publishes what this Mac, its tools and Corvane look like, without what names a person, a network or a site.
    [[nodiscard]] Flow<> makeReport();
    /// Saves what makeReport() has published.
    [[nodiscard]] Flow<> saveReport();

    // Maintenance: maintenance.cpp

    [[nodiscard]] Flow<> checkForUpdates();
    [[nodiscard]] Flow<> performUpdate();
    void setLaunchAtLogin(bool on);
    [[nodiscard]] Flow<> removePihole();

    // The admin page's port: web_port.cpp

    [[nodiscard]] Flow<> changeWebPort(int port);

    // What an end in the middle leaves behind: recovery.cpp

    /// Stops what is under way; nothing begins any more.
    void stopEverything();
    /// The same, and waits, but no longer than the limit, until what was being exchanged is put back.
    [[nodiscard]] Flow<> windDown(Clock::Duration limit);
    /// Compares pinned version, port and files with the container that was last seen, puts right what was cut off, and
    /// says what still differs.
    [[nodiscard]] Flow<> putRight();
    /// Makes the container of the version on offer anew; its image is still there.
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
    /// Puts a line beside what the key stands for, or takes it away.
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
    void publishLook(bool answers, DnsTrouble trouble, const ResolverReport &report);
    [[nodiscard]] Flow<> control(Activity activity, QString verb, Place::Name from);
    [[nodiscard]] Flow<> afterControl(CommandResult result, Activity done);
    [[nodiscard]] std::optional<std::chrono::seconds> restOfPause(const PiholeBlocking &state) const;
    [[nodiscard]] Flow<> pause(std::chrono::seconds length, PauseEnd endedBy, QString sentence);
    [[nodiscard]] Flow<> keepPauseShort();
    [[nodiscard]] Flow<bool> runLists();
    [[nodiscard]] Flow<bool> awaitNewerLists(std::optional<qint64> before, Clock::Duration limit);
    [[nodiscard]] Flow<> followLeftListRun();
    /// Pi-hole's settings as an archive. A pause is lifted for it: whoever restored it would have blocking off for
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
    void showPiholeCheck(int row, CheckState state, const QString &detail);
    [[nodiscard]] Flow<bool> testContainer(const ActivityMark *run, Clock::Duration limit);
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
    void tellOfRollback(const QString &unwritten);
    [[nodiscard]] Flow<> movePihole(int port, CommandSteps steps);
    [[nodiscard]] Flow<> putFilesRight();
    [[nodiscard]] bool judge(const DeployedContainer &deployed);
    [[nodiscard]] bool judgeNewVersion(const QString &left);
    [[nodiscard]] Flow<bool> remake(QString tag);
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
    bool m_refreshAgain = false;
    bool m_refreshAgainWithStats = false;
    int m_newestWatch = 0;
    int m_oldAnswers = 0;
    int m_toolSearches = 0;
    int m_newestToolsFound = 0;
    QString m_loadedLog;
    bool m_showsFollowedLog = false;
};

} // namespace corvane
