#pragma once

#include "api/pihole_api.h"
#include "app/check_row.h"
#include "app/clock.h"
#include "app/dialogs.h"
#include "app/launch.h"
#include "app/menu_icon.h"
#include "app/place.h"
#include "app/published.h"
#include "app/settings_store.h"
#include "app/test_outcome.h"
#include "checks/browser_info.h"
#include "checks/port_report.h"
#include "dns/network_service.h"
#include "dns/resolver_report.h"
#include "exec/operation_runner.h"
#include "platform/login_item.h"
#include "platform/workspace.h"
#include "runtime/container_state.h"

#include <QCoro/QCoroTask>
#include <QObject>
#include <QSet>
#include <QUrl>

namespace corvane {

/// What the model asks of the world around it, apart from the programs it runs. All of it outlives the model.
struct Surroundings {
    SettingsStore &settings;
    Dialogs &dialogs;
    Workspace &workspace;
    LoginItem &loginItem;
    Clock &clock;
    /// The address of the release feed of the Pi-hole image.
    QUrl releaseFeed;
};

/// The one observable state behind every screen: every view reads it, every flow writes it.
///
/// Lives on the main thread. A flow is a coroutine; it ends quietly when the model goes away while it waits. The flows
/// stand in files of their own, by subject.
class AppModel : public QObject {
    Q_OBJECT

    // Settings that outlive the program.
    CORVANE_PERSISTED(AppModel, int, webPort, setWebPort)
    CORVANE_PERSISTED(AppModel, QString, pinnedTag, setPinnedTag)
    CORVANE_PERSISTED(AppModel, bool, autostartColima, setAutostartColima)
    CORVANE_PERSISTED(AppModel, bool, wizardFinished, setWizardFinished)
    CORVANE_PERSISTED(AppModel, bool, browserReadAllowed, setBrowserReadAllowed)

    // Where the user is, and what has been found out since launch.
    CORVANE_PUBLISHED(AppModel, bool, showWizard, setShowWizard, true)
    CORVANE_PUBLISHED(AppModel, int, step, setStep, 0)
    CORVANE_PUBLISHED(AppModel, QSet<int>, visited, setVisited, QSet<int>{0})
    CORVANE_PUBLISHED(AppModel, Outcomes, outcomes, setOutcomes, Outcomes())
    CORVANE_PUBLISHED(AppModel, QSet<QString>, busy, setBusy, QSet<QString>())
    CORVANE_PUBLISHED(AppModel, QString, notice, setNotice, QString())

    // Tools.
    CORVANE_PUBLISHED(AppModel, bool, hasBrew, setHasBrew, false)
    CORVANE_PUBLISHED(AppModel, bool, hasDocker, setHasDocker, false)
    CORVANE_PUBLISHED(AppModel, bool, hasColima, setHasColima, false)
    CORVANE_PUBLISHED(AppModel, bool, dockerWorks, setDockerWorks, false)
    CORVANE_PUBLISHED(AppModel, bool, composeAvailable, setComposeAvailable, false)

    // Checks of this Mac.
    CORVANE_PUBLISHED(AppModel, CheckRows, systemChecks, setSystemChecks, CheckRows())
    CORVANE_PUBLISHED(AppModel, QList<PortReport>, portReports, setPortReports, QList<PortReport>())

    // Starting and testing Pi-hole.
    CORVANE_PUBLISHED(AppModel, QString, passwordInput, setPasswordInput, QString())
    CORVANE_PUBLISHED(AppModel, QString, adminPassword, setAdminPassword, QString())
    CORVANE_PUBLISHED(AppModel, bool, passwordKnown, publishPasswordKnown, false)
    CORVANE_PUBLISHED(AppModel, QString, startMessage, setStartMessage, QString())
    /// Where Pi-hole was last started, stopped or restarted from.
    CORVANE_PUBLISHED(AppModel, corvane::Place::Name, startPlace, setStartPlace, Place::SetUp)
    CORVANE_PUBLISHED(AppModel, CheckRows, piholeChecks, setPiholeChecks, CheckRows())
    CORVANE_PUBLISHED(AppModel, bool, udpProblem, setUdpProblem, false)
    CORVANE_PUBLISHED(AppModel, bool, tcpWorks, setTcpWorks, false)
    CORVANE_PUBLISHED(AppModel, bool, grpcFlagSupported, setGrpcFlagSupported, false)
    CORVANE_PUBLISHED(AppModel, std::optional<BlockingTestResult>, blockingTest, setBlockingTest, std::nullopt)

    // This Mac's DNS.
    CORVANE_PUBLISHED(AppModel, QList<NetworkService>, services, setServices, QList<NetworkService>())
    CORVANE_PUBLISHED(AppModel, QSet<QString>, selectedServices, setSelectedServices, QSet<QString>())
    CORVANE_PUBLISHED(AppModel, bool, piholeOnly, setPiholeOnly, false)
    CORVANE_PUBLISHED(AppModel, QString, dnsMessage, setDnsMessage, QString())
    /// Where the DNS servers were last changed or restored from.
    CORVANE_PUBLISHED(AppModel, corvane::Place::Name, dnsPlace, setDnsPlace, Place::SetUp)
    CORVANE_PUBLISHED(AppModel, std::optional<ResolverReport>, resolverReport, setResolverReport, std::nullopt)
    CORVANE_PUBLISHED(AppModel, QString, systemTestDetail, setSystemTestDetail, QString())

    // Browsers.
    CORVANE_PUBLISHED(AppModel, QList<BrowserInfo>, browsers, setBrowsers, QList<BrowserInfo>())
    CORVANE_PUBLISHED(AppModel, QString, browserTestDetail, setBrowserTestDetail, QString())

    // The live status.
    CORVANE_PUBLISHED(AppModel, ContainerState, containerState, setContainerState, ContainerState::dockerDown())
    CORVANE_PUBLISHED(AppModel, bool, answering, setAnswering, false)
    CORVANE_PUBLISHED(AppModel, bool, usedByMac, setUsedByMac, false)
    CORVANE_PUBLISHED(AppModel, bool, statusChecked, setStatusChecked, false)
    CORVANE_PUBLISHED(AppModel, std::optional<PiholeSummary>, summary, setSummary, std::nullopt)
    CORVANE_PUBLISHED(AppModel, std::optional<PiholeBlocking>, blocking, setBlocking, std::nullopt)
    CORVANE_PUBLISHED(AppModel, QString, apiMessage, setApiMessage, QString())
    CORVANE_PUBLISHED(AppModel, bool, bannerDismissed, setBannerDismissed, false)
    CORVANE_PUBLISHED(AppModel, bool, following, publishFollowing, false)

    // Maintenance.
    CORVANE_PUBLISHED(AppModel, std::optional<QString>, latestTag, setLatestTag, std::nullopt)
    CORVANE_PUBLISHED(AppModel, QString, updateMessage, setUpdateMessage, QString())
    CORVANE_PUBLISHED(AppModel, bool, launchAtLogin, publishLaunchAtLogin, false)

    // What follows from the fields above.
    CORVANE_DERIVED(AppModel, MenuIcon, icon)
    CORVANE_DERIVED(AppModel, QString, statusLine)
    CORVANE_DERIVED(AppModel, bool, showDeadDNSBanner)
    CORVANE_DERIVED(AppModel, bool, setupSucceeded)
    CORVANE_DERIVED(AppModel, QUrl, dashboardURL)

    Q_PROPERTY(QString logText READ logText NOTIFY logTextChanged)
    Q_PROPERTY(corvane::OperationRunner *installOp READ installOp CONSTANT)
    Q_PROPERTY(corvane::OperationRunner *startOp READ startOp CONSTANT)
    Q_PROPERTY(corvane::OperationRunner *maintOp READ maintOp CONSTANT)
    Q_PROPERTY(corvane::OperationRunner *followOp READ followOp CONSTANT)

public:
    static constexpr int kStepCount = 8;
    [[nodiscard]] static const QStringList &stepTitles();

    /// Reads the settings and the login item and begins to read the keychain; nothing else runs before `bootstrap`.
    explicit AppModel(const Surroundings &surroundings);
    ~AppModel() override;

    // Start-up: app_model.cpp

    /// Finds the tools, sets up the API client and begins to poll.
    [[nodiscard]] QCoro::Task<> bootstrap();
    [[nodiscard]] QCoro::Task<> refreshTools();
    /// Gives the API client the port and the password now in force; no password while the keychain has not answered.
    void configureAPI();
    [[nodiscard]] PiholeAPI &api() { return m_api; }

    // The wizard's steps: app_model.cpp

    /// Shows the step, clamped to the steps there are.
    Q_INVOKABLE void go(int step);
    Q_INVOKABLE [[nodiscard]] bool isStepDone(int step) const;

    // The live status: status.cpp

    [[nodiscard]] QCoro::Task<> refreshStatus(bool includeStats);
    [[nodiscard]] QCoro::Task<> refreshStats();

    // Everyday actions: actions.cpp

    void openDashboard();
    [[nodiscard]] QCoro::Task<> pauseBlocking();
    [[nodiscard]] QCoro::Task<> resumeBlocking();
    [[nodiscard]] QCoro::Task<> togglePause();
    /// The title of the operation that brings Colima up.
    static constexpr QLatin1StringView kStartingColima{"Starting Colima"};
    [[nodiscard]] QCoro::Task<> startPiholeNow(Place::Name from = Place::Dashboard);
    [[nodiscard]] QCoro::Task<> finishStart();
    [[nodiscard]] QCoro::Task<QString> makeRoom();
    [[nodiscard]] QCoro::Task<> stopPihole(Place::Name from = Place::Dashboard);
    [[nodiscard]] QCoro::Task<> restartPihole();
    /// What the menu offers.
    [[nodiscard]] QCoro::Task<> toggleStartStop();

    // The container's log: logs.cpp

    /// What the log panel shows: the lines that were loaded, or those that are being followed.
    [[nodiscard]] QString logText() const;
    [[nodiscard]] QCoro::Task<> loadLogs();
    void setFollowing(bool follow);
    [[nodiscard]] QCoro::Task<> saveLogs();

    // The checks of this Mac: system_checks.cpp

    [[nodiscard]] QCoro::Task<> runSystemChecks();

    // Installing and starting: start_flows.cpp

    void installColimaAndDocker();
    void applyAutostart(bool enable);
    void startColimaOnly();
    [[nodiscard]] QCoro::Task<> testDocker();
    [[nodiscard]] QCoro::Task<> changeAutostart(bool on);
    [[nodiscard]] static QString generatePassword();
    /// The `startMessage` of a start that another program prevents.
    static constexpr QLatin1StringView kPortTaken{"A port that Pi-hole needs is taken. See what holds it below."};
    [[nodiscard]] QCoro::Task<> startPihole();

    // Proving that Pi-hole works: pihole_tests.cpp

    /// `wait`: give a container that is still starting 90 seconds.
    [[nodiscard]] QCoro::Task<> runPiholeTests(bool wait);
    [[nodiscard]] QCoro::Task<> fixUDPForwarding();
    [[nodiscard]] QCoro::Task<> runBlockingTest();
    /// The Pi-hole tests, the blocking test and the system DNS test, one after another.
    [[nodiscard]] QCoro::Task<> runAllTests();

    // This Mac's DNS: dns_flows.cpp

    [[nodiscard]] QCoro::Task<> loadServices();
    [[nodiscard]] QCoro::Task<> applyDNS();
    [[nodiscard]] QCoro::Task<> runSystemTest();
    [[nodiscard]] QCoro::Task<> restoreOldSettings(Place::Name from = Place::SetUp);

    // Browsers: browser_test.cpp

    /// Reads the browsers' settings once the user has allowed it.
    [[nodiscard]] QCoro::Task<> scanBrowsers();
    [[nodiscard]] QCoro::Task<> openBrowserSettings(QString id);
    [[nodiscard]] QCoro::Task<> runBrowserTest();

    // Saving and restoring Pi-hole's settings: teleporter.cpp

    [[nodiscard]] QCoro::Task<> exportBackup();
    [[nodiscard]] QCoro::Task<> importBackup();

    // Maintenance: maintenance.cpp

    [[nodiscard]] QCoro::Task<> checkForUpdates();
    [[nodiscard]] QCoro::Task<> performUpdate();
    void setLaunchAtLogin(bool on);
    [[nodiscard]] QCoro::Task<> changeWebPort(int port);
    [[nodiscard]] QCoro::Task<> removePihole();

    [[nodiscard]] OperationRunner *installOp() { return &m_installOp; }
    [[nodiscard]] OperationRunner *startOp() { return &m_startOp; }
    [[nodiscard]] OperationRunner *maintOp() { return &m_maintOp; }
    [[nodiscard]] OperationRunner *followOp() { return &m_followOp; }
    /// Marks an action as under way; a key stays busy until it was cleared as often as it was marked. See BusyKey.
    void markBusy(const QString &key);
    void clearBusy(const QString &key);
    /// Whether a set-up or maintenance operation is under way; following the log is none.
    [[nodiscard]] bool operationRunning() const;

Q_SIGNALS:
    void logTextChanged();

private:
    void bindDerivedFields();
    void recordOutcome(const QString &test, bool passed, const QString &summary);
    [[nodiscard]] QCoro::Task<> poll();
    [[nodiscard]] QCoro::Task<> control(QString verb, Place::Name from);
    void follow();
    void onFollowerEnded();

    [[nodiscard]] QCoro::Task<> finishInstall(bool succeeded);
    [[nodiscard]] QCoro::Task<> waitForDocker();
    void startColimaWithoutService();
    [[nodiscard]] QCoro::Task<bool> piholeCanStart();
    [[nodiscard]] QCoro::Task<> startContainer(QString password);

    void showPiholeCheck(int run, int row, bool passed, const QString &detail);
    [[nodiscard]] QCoro::Task<bool> testContainer(int run, Clock::Duration limit);
    [[nodiscard]] QCoro::Task<bool> testAdminPage(int run, int attempts);
    [[nodiscard]] QCoro::Task<bool> testDns(int run, int attempts, bool containerPassed);
    [[nodiscard]] QCoro::Task<> explainSilentDns(int run);
    [[nodiscard]] QCoro::Task<> finishUDPFix(bool succeeded);

    [[nodiscard]] bool changesDns() const;
    [[nodiscard]] QCoro::Task<QString> findInLog(QStringList names, QSet<QString> *found);

    [[nodiscard]] bool maintains() const;
    [[nodiscard]] QCoro::Task<QString> saveBackupBefore(QString newTag);
    [[nodiscard]] QCoro::Task<> startUpdate(QString newTag);
    [[nodiscard]] QCoro::Task<> finishUpdate(bool succeeded, QString oldTag, QString newTag);
    void finishPortChange(bool succeeded);
    [[nodiscard]] QCoro::Task<> removeContainer();
    void forgetPihole();

    SettingsStore &m_settings;
    Dialogs &m_dialogs;
    Workspace &m_workspace;
    LoginItem &m_loginItem;
    Clock &m_clock;
    QUrl m_releaseFeed;

    PiholeAPI m_api;
    OperationRunner m_installOp;
    OperationRunner m_startOp;
    OperationRunner m_maintOp;
    OperationRunner m_followOp;
    QHash<QString, int> m_busyCounts;
    bool m_refreshing = false;
    bool m_preparingStart = false;
    bool m_updating = false;
    bool m_removing = false;
    int m_newestTestRun = 0;
    QString m_loadedLog;
    bool m_showsFollowedLog = false;
};

} // namespace corvane
