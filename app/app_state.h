#pragma once

#include "api/pihole_history.h"
#include "api/pihole_types.h"
#include "app/activity.h"
#include "app/browser_proof.h"
#include "app/browser_rule.h"
#include "app/check_row.h"
#include "app/dns_trouble.h"
#include "app/menu_icon.h"
#include "app/place.h"
#include "app/published.h"
#include "app/settings_store.h"
#include "app/test_outcome.h"
#include "checks/browser_info.h"
#include "checks/port_report.h"
#include "dns/network_service.h"
#include "dns/resolver_report.h"
#include "platform/login_item.h"
#include "runtime/container_state.h"

#include <QObject>
#include <QSet>
#include <QUrl>
#include <QVariantMap>

namespace corvane {

/// Everything that is known: every view reads it, every flow of the model writes it. Lives on the main thread.
/// Messages are sentences for the user, empty when there is nothing to say.
class AppState : public QObject {
    Q_OBJECT

    // Settings that outlive the program.
    CORVANE_PERSISTED(AppState, int, webPort, setWebPort)
    CORVANE_PERSISTED(AppState, QString, pinnedTag, setPinnedTag)
    CORVANE_PERSISTED(AppState, bool, autostartColima, setAutostartColima)
    CORVANE_PERSISTED(AppState, bool, wizardFinished, setWizardFinished)
    CORVANE_PERSISTED(AppState, bool, browserReadAllowed, setBrowserReadAllowed)

    // Where the user is, and what has been found out since launch.
    CORVANE_PUBLISHED(AppState, bool, showWizard, setShowWizard, true)
    CORVANE_PUBLISHED(AppState, int, step, setStep, 0)
    CORVANE_PUBLISHED(AppState, QSet<int>, visited, setVisited, QSet<int>{0})
    CORVANE_PUBLISHED(AppState, Outcomes, outcomes, setOutcomes, Outcomes())
    CORVANE_PUBLISHED(AppState, QSet<QString>, busy, setBusy, QSet<QString>())
    CORVANE_PUBLISHED(AppState, Activities, underWay, setUnderWay, Activities())
    CORVANE_PUBLISHED(AppState, QString, notice, setNotice, QString())

    // Tools.
    CORVANE_PUBLISHED(AppState, bool, hasBrew, setHasBrew, false)
    CORVANE_PUBLISHED(AppState, bool, hasDocker, setHasDocker, false)
    CORVANE_PUBLISHED(AppState, bool, hasColima, setHasColima, false)
    CORVANE_PUBLISHED(AppState, bool, dockerWorks, setDockerWorks, false)
    CORVANE_PUBLISHED(AppState, bool, composeAvailable, setComposeAvailable, false)

    // Checks of this Mac.
    CORVANE_PUBLISHED(AppState, CheckRows, systemChecks, setSystemChecks, CheckRows())
    CORVANE_PUBLISHED(AppState, QList<PortReport>, portReports, setPortReports, QList<PortReport>())

    // Starting and testing Pi-hole.
    CORVANE_ENTERED(AppState, QString, passwordInput, setPasswordInput, QString())
    CORVANE_PUBLISHED(AppState, QString, adminPassword, setAdminPassword, QString())
    CORVANE_PUBLISHED(AppState, bool, passwordKnown, publishPasswordKnown, false)
    CORVANE_PUBLISHED(AppState, QString, startMessage, setStartMessage, QString())
    /// Where Pi-hole was last started, stopped or restarted from.
    CORVANE_PUBLISHED(AppState, corvane::Place::Name, startPlace, setStartPlace, Place::SetUp)
    CORVANE_PUBLISHED(AppState, CheckRows, piholeChecks, setPiholeChecks, CheckRows())
    CORVANE_PUBLISHED(AppState, bool, udpProblem, setUdpProblem, false)
    CORVANE_PUBLISHED(AppState, bool, tcpWorks, setTcpWorks, false)
    CORVANE_PUBLISHED(AppState, bool, grpcFlagSupported, setGrpcFlagSupported, false)
    CORVANE_PUBLISHED(AppState, std::optional<BlockingTestResult>, blockingTest, setBlockingTest, std::nullopt)

    // This Mac's DNS.
    CORVANE_PUBLISHED(AppState, QList<NetworkService>, services, setServices, QList<NetworkService>())
    CORVANE_PUBLISHED(AppState, QSet<QString>, selectedServices, setSelectedServices, QSet<QString>())
    CORVANE_ENTERED(AppState, bool, piholeOnly, setPiholeOnly, false)
    CORVANE_PUBLISHED(AppState, QString, dnsMessage, setDnsMessage, QString())
    /// Where the DNS servers were last changed or restored from.
    CORVANE_PUBLISHED(AppState, corvane::Place::Name, dnsPlace, setDnsPlace, Place::SetUp)
    CORVANE_PUBLISHED(AppState, std::optional<ResolverReport>, resolverReport, setResolverReport, std::nullopt)
    /// Where the script is that restores the old servers without Corvane; empty when there is none.
    CORVANE_PUBLISHED(AppState, QString, restoreScript, setRestoreScript, QString())
    CORVANE_PUBLISHED(AppState, QString, systemTestDetail, setSystemTestDetail, QString())

    // Browsers.
    CORVANE_PUBLISHED(AppState, QList<BrowserInfo>, browsers, setBrowsers, QList<BrowserInfo>())
    CORVANE_PUBLISHED(AppState, QString, browserTestDetail, setBrowserTestDetail, QString())
    CORVANE_PUBLISHED(AppState, BrowserRule, browserRule, setBrowserRule, BrowserRule::NotNeeded)
    /// Whether Pi-hole has Firefox leave its default secure DNS off; absent while that is not known.
    CORVANE_PUBLISHED(AppState, std::optional<bool>, firefoxToldOff, setFirefoxToldOff, std::nullopt)
    CORVANE_PUBLISHED(AppState, BrowserProofs, browserProofs, setBrowserProofs, BrowserProofs())

    // The live status.
    CORVANE_PUBLISHED(AppState, ContainerState, containerState, setContainerState, ContainerState::dockerDown())
    CORVANE_PUBLISHED(AppState, bool, answering, setAnswering, false)
    CORVANE_PUBLISHED(AppState, bool, usedByMac, setUsedByMac, false)
    CORVANE_PUBLISHED(AppState, bool, statusChecked, setStatusChecked, false)
    CORVANE_PUBLISHED(AppState, std::optional<PiholeSummary>, summary, setSummary, std::nullopt)
    CORVANE_PUBLISHED(AppState, std::optional<PiholeBlocking>, blocking, setBlocking, std::nullopt)
    CORVANE_PUBLISHED(AppState, QString, apiMessage, setApiMessage, QString())
    /// What was asked in the last 24 hours, and what was blocked most; absent until Pi-hole has said so.
    CORVANE_PUBLISHED(AppState, std::optional<PiholeHistory>, history, setHistory, std::nullopt)
    CORVANE_PUBLISHED(AppState, std::optional<PiholeTopBlocked>, topBlocked, setTopBlocked, std::nullopt)
    /// Why these two could not be read; else empty.
    CORVANE_PUBLISHED(AppState, QString, historyProblem, setHistoryProblem, QString())
    CORVANE_PUBLISHED(AppState, bool, bannerDismissed, setBannerDismissed, false)
    CORVANE_PUBLISHED(AppState, bool, following, publishFollowing, false)

    // What is true beside the fields above, where their own words say less.

    /// Pi-hole has just been started and does not answer yet.
    CORVANE_PUBLISHED(AppState, bool, starting, setStarting, false)
    CORVANE_PUBLISHED(AppState, DnsTrouble, dnsTrouble, setDnsTrouble, DnsTrouble::None)
    /// Why an engine that is there cannot be used.
    CORVANE_PUBLISHED(AppState, QString, engineProblem, setEngineProblem, QString())
    /// A reply has come over UDP, whatever it said: the port is forwarded.
    CORVANE_PUBLISHED(AppState, bool, udpReplied, setUdpReplied, false)
    /// Pi-hole counts its lists, but cannot read them.
    CORVANE_PUBLISHED(AppState, bool, listsDamaged, setListsDamaged, false)
    /// Further sentences by what they are shown beside: "api", "start", "pihole", "blocking", "lists", "system",
    /// "browser", "version".
    CORVANE_PUBLISHED(AppState, QVariantMap, notes, setNotes, QVariantMap())

    // Maintenance.
    CORVANE_PUBLISHED(AppState, std::optional<QString>, latestTag, setLatestTag, std::nullopt)
    CORVANE_PUBLISHED(AppState, QString, updateMessage, setUpdateMessage, QString())
    /// The version that can be brought back because another one, or none, is there; else empty.
    CORVANE_PUBLISHED(AppState, QString, wayBack, setWayBack, QString())
    /// The report as it would be saved; empty while there is none.
    CORVANE_PUBLISHED(AppState, QString, report, setReport, QString())
    CORVANE_PUBLISHED(AppState, bool, launchAtLogin, publishLaunchAtLogin, false)

    // What follows from the fields above.
    CORVANE_DERIVED(AppState, MenuIcon, icon)
    CORVANE_DERIVED(AppState, QString, statusLine)
    CORVANE_DERIVED(AppState, bool, showDeadDNSBanner)
    CORVANE_DERIVED(AppState, bool, setupSucceeded)
    CORVANE_DERIVED(AppState, QUrl, dashboardURL)
    CORVANE_DERIVED(AppState, QString, statusNote)
    CORVANE_DERIVED(AppState, bool, listsEmpty)

public:
    /// Reads the settings and the login item.
    AppState(SettingsStore &settings, const LoginItem &loginItem);

protected:
    SettingsStore &m_settings;

private:
    void bindDerivedFields();
};

} // namespace corvane
