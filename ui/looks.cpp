#include "ui/looks.h"

#include "app/admin_password.h"
#include "app/needed_tools.h"
#include "app/version_tag.h"
#include "checks/port_checker.h"
#include "runtime/pihole_controller.h"
#include "ui/decisions/browsers.h"
#include "ui/decisions/controls.h"
#include "ui/decisions/dashboard_texts.h"
#include "ui/decisions/lists_texts.h"
#include "ui/decisions/places.h"
#include "ui/decisions/ports.h"
#include "ui/decisions/steps.h"
#include "ui/fonts.h"

#include <QCoreApplication>
#include <QEvent>

#include <utility>

namespace corvane {

Looks::Looks(AppModel &app, Appearance &appearance)
    : m_app(app)
    , m_appearance(appearance)
{
    followBusy();
    bindPlaces();
    bindDashboard();
    bindControls();
    bindSetUp();
    followLists();
    followBrowsers();
    followOperations();
    connect(&m_appearance, &Appearance::changed, this, &Looks::appearanceChanged);
    qApp->installEventFilter(this);
}

void Looks::followBusy()
{
    connect(&m_app, &AppModel::busyChanged, this, &Looks::busyChanged);
    m_testingAnything.setBinding([this] { return testingPihole() || testingBlocking() || testingSystem(); });
}

void Looks::bindPlaces()
{
    const auto inBanner = [this](Place::Name asked) {
        return answersInBanner(asked, m_app.showDeadDNSBanner(), m_app.showWizard());
    };
    m_bannerTellsStart.setBinding([this, inBanner] { return inBanner(m_app.startPlace()); });
    m_bannerTellsDNS.setBinding([this, inBanner] { return inBanner(m_app.dnsPlace()); });
}

void Looks::bindDashboard()
{
    m_dotTint.setBinding([this] { return corvane::dotTint(m_app.icon()); });
    m_logTrouble.setBinding([this] { return corvane::logTrouble(m_app.apiMessage()); });
    m_pauseLabel.setBinding([this] { return corvane::pauseLabel(m_app.blocking()); });
    m_listsText.setBinding([this] { return corvane::listsText(m_app.summary(), QDateTime::currentDateTime()); });
    m_listsHint.setBinding([this] { return corvane::listsHint(m_app.summary(), QDateTime::currentDateTime()); });
}

void Looks::bindControls()
{
    const auto changing = [this] { return m_operating || controlling(); };
    m_canStart.setBinding([this, changing] { return corvane::canStart(m_app.containerState(), changing()); });
    m_canStopOrRestart.setBinding(
        [this, changing] { return corvane::canStopOrRestart(m_app.containerState(), changing()); });
    m_canUpdate.setBinding([this] {
        const std::optional<QString> latest = m_app.latestTag();
        return !m_operating && latest && isNewer(*latest, m_app.pinnedTag());
    });
    m_canChangePihole.setBinding([this] { return corvane::canChangePihole(m_operating, controlling()); });
    m_canRefreshLists.setBinding([this] { return corvane::canRefreshLists(m_canChangePihole, m_app.answering()); });
    m_canRemovePihole.setBinding([this] { return corvane::canRemovePihole(m_operating, applyingDNS()); });
    m_canSetUpPihole.setBinding(
        [this] { return corvane::canSetUpPihole(m_operating, m_app.dockerWorks(), m_app.passwordInput()); });
    m_canChangeDNS.setBinding([this] { return canChangeDns(m_app.selectedServices(), restoringDNS()); });
    m_mustPickService.setBinding([this] {
        return corvane::mustPickService(m_app.dnsMessage(), !m_app.services().isEmpty(), m_app.selectedServices());
    });
    m_foundNoBrowser.setBinding([this] {
        return corvane::foundNoBrowser(m_app.browserReadAllowed(), scanningBrowsers(), !m_app.browsers().isEmpty());
    });
    m_returnGoesOn.setBinding([this] { return corvane::returnGoesOn(m_app.step(), m_operating, m_app.busy()); });
}

void Looks::bindSetUp()
{
    m_stepPosition.setBinding([this] { return corvane::stepPosition(m_app.step()); });
    m_stepView.setBinding([this] { return corvane::stepView(m_app.step()); });
    m_hasStepBefore.setBinding([this] { return corvane::hasStepBefore(m_app.step()); });
    m_hasStepAfter.setBinding([this] { return corvane::hasStepAfter(m_app.step()); });
    m_webPortTaken.setBinding([this] { return corvane::webPortTaken(m_app.portReports()); });
    m_dnsPortTaken.setBinding([this] { return corvane::dnsPortTaken(m_app.portReports()); });
    m_passwordTooShort.setBinding([this] { return AdminPassword::isTooShort(m_app.passwordInput()); });
    m_passwordHasOtherCharacters.setBinding(
        [this] { return AdminPassword::hasForbiddenCharacter(m_app.passwordInput()); });
    m_piholeSubtitle.setBinding([this] {
        return QStringLiteral("Choose an admin password for Pi-hole's web page. It is kept in your Keychain. "
                              "Time zone: %1. Pinned Pi-hole version: %2.")
            .arg(m_timeZone, m_app.pinnedTag());
    });
    m_dockerBadge.setBinding([this] { return outcomeBadge(m_app.outcomes(), QStringLiteral("docker")); });
    m_dockerTested.setBinding([this] { return m_app.outcomes().contains(QStringLiteral("docker")); });
    m_dockerHint.setBinding([this] { return corvane::dockerHint(m_app.outcomes(), m_app.hasDocker()); });
    m_systemBadge.setBinding([this] { return outcomeBadge(m_app.outcomes(), QStringLiteral("system")); });
    m_systemVerdict.setBinding([this] { return corvane::systemVerdict(m_app.outcomes()); });
    m_blockingCounts.setBinding([this] { return corvane::blockingCounts(m_app.blockingTest()); });
    m_resolverWarning.setBinding([this] { return corvane::resolverWarning(m_app.resolverReport(), m_app.outcomes()); });
    m_serversInUse.setBinding([this] { return corvane::serversInUse(m_app.resolverReport()); });
    m_selectedServices.setBinding([this] {
        const QSet<QString> names = m_app.selectedServices();
        return QStringList(names.begin(), names.end());
    });
}

void Looks::followLists()
{
    const auto follow = [this](auto signal, auto show) {
        connect(&m_app, signal, this, show);
        show();
    };
    follow(&AppModel::systemChecksChanged, [this] { m_systemChecks.show(checkRows(m_app.systemChecks())); });
    follow(&AppModel::piholeChecksChanged, [this] { m_piholeChecks.show(checkRows(m_app.piholeChecks())); });
    follow(&AppModel::blockingTestChanged,
           [this] { m_blockingRows.show(corvane::blockingRows(m_app.blockingTest())); });
    follow(&AppModel::servicesChanged, [this] { m_services.show(serviceRows(m_app.services())); });
    follow(&AppModel::outcomesChanged, [this] { m_outcomes.show(outcomeRows(m_app.outcomes())); });
    follow(&AppModel::outcomesChanged, [this] { m_testResults.show(corvane::testResults(m_app.outcomes())); });
    follow(&AppModel::portReportsChanged, [this] { showPorts(); });
    // Equal reports send no signal.
    connect(&m_app, &AppModel::busyChanged, this, [this, was = checking()]() mutable {
        if (std::exchange(was, checking()) && !checking()) showPorts();
    });
    // It may have been changed elsewhere while another step was shown.
    follow(&AppModel::stepChanged, [this] { m_timeZone = PiholeController::safeTimeZone(); });
    const auto counters = [this] { m_counters.show(counterRows(m_app.summary(), m_app.blocking())); };
    follow(&AppModel::summaryChanged, counters);
    follow(&AppModel::blockingChanged, counters);
    const auto tools = [this] {
        QList<Row> rows;
        for (const NeededTool &tool : kNeededTools)
            rows.append(toolRow(QString::fromLatin1(tool.name), (m_app.*tool.isThere)()));
        m_tools.show(rows);
    };
    for (const NeededTool &tool : kNeededTools)
        follow(tool.changed, tools);
    const auto steps = [this] { showSteps(); };
    follow(&AppModel::stepChanged, steps);
    follow(&AppModel::visitedChanged, steps);
    follow(&AppModel::systemChecksChanged, steps);
    follow(&AppModel::dockerWorksChanged, steps);
    follow(&AppModel::outcomesChanged, steps);
    follow(&AppModel::logTextChanged, [this] {
        // While it follows, the text is not joined just to be asked for its length.
        m_hasLog = m_app.following() ? !m_app.followOp()->lines().isEmpty() : !m_app.logText().isEmpty();
    });
}

void Looks::followBrowsers()
{
    const auto show = [this] {
        const BrowserSurroundings around{m_app.resolverReport(), m_app.browserRule(), m_app.firefoxToldOff(),
                                         m_app.browserProofs()};
        m_browsers.show(browserRows(m_app.browsers(), around));
    };
    for (auto changed : {&AppModel::browsersChanged, &AppModel::resolverReportChanged, &AppModel::browserRuleChanged,
                         &AppModel::firefoxToldOffChanged, &AppModel::browserProofsChanged})
        connect(&m_app, changed, this, show);
    show();
    m_browserRuleText.setBinding([this] {
        const std::optional<PiholeBlocking> blocking = m_app.blocking();
        return corvane::browserRuleText(m_app.browserRule(), m_app.answering(), !blocking || blocking->enabled);
    });
    m_provedBrowsers.setBinding([this] { return corvane::provedBrowsers(m_app.browsers(), m_app.browserProofs()); });
}

void Looks::followOperations()
{
    const auto update = [this] {
        const bool runs = m_app.operationRunning();
        const Activities underWay = m_app.underWay();
        m_operating = corvane::operating(runs, underWay);
        m_startInPreparation = corvane::startInPreparation(underWay, runs);
        m_updateInPreparation = corvane::updateInPreparation(underWay, runs);
        m_backupUnderWay = corvane::backupUnderWay(underWay);
        const OperationRunner *runner = m_app.maintOp();
        m_startingColima = runner->title() == AppModel::kStartingColima && !runner->succeeded();
        m_movesPort = corvane::movesPort(runner->title());
        m_changesAutostart = corvane::changesAutostart(m_app.installOp()->title());
    };
    for (OperationRunner *runner : {m_app.installOp(), m_app.startOp(), m_app.maintOp()})
        for (auto changed :
             {&OperationRunner::runningChanged, &OperationRunner::titleChanged, &OperationRunner::succeededChanged})
            connect(runner, changed, this, update);
    connect(&m_app, &AppModel::underWayChanged, this, update);
    update();
    const auto judge = [this] {
        m_startFailedOnPort = corvane::startFailedOnPort(m_app.startMessage(), m_app.startOp()->failureSummary());
    };
    connect(&m_app, &AppModel::startMessageChanged, this, judge);
    connect(m_app.startOp(), &OperationRunner::failureSummaryChanged, this, judge);
    judge();
}

void Looks::showSteps()
{
    QList<Row> rows;
    for (int step = 0; step < kStepCount; ++step)
        rows.append(stepRow(step, AppModel::stepTitles().at(step), m_app.isStepDone(step), step == m_app.step()));
    m_steps.show(rows);
}

void Looks::showPorts()
{
    m_takenPorts.show(corvane::takenPorts(m_app.portReports()));
    QStringList ports;
    if (corvane::webPortTaken(m_app.portReports())) {
        for (const int port : PortChecker::freeWebPorts(m_app.webPort()))
            ports << QString::number(port);
    }
    if (ports == m_freePorts) return;
    m_freePorts = ports;
    Q_EMIT freePortsChanged();
}

QStringList Looks::webPorts() const { return webPortChoices(); }

QString Looks::noWebPortFree() const { return corvane::noWebPortFree(); }

QString Looks::fixedFamily() const { return fixedFont().family(); }

bool Looks::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == qApp && event->type() == QEvent::ApplicationActivate) m_timeZone = PiholeController::safeTimeZone();
    return QObject::eventFilter(watched, event);
}

} // namespace corvane
