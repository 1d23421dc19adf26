#include "app/app_model.h"
#include "app/colima_start.h"
#include "app/wizard_steps.h"
#include "dns/dns_configurator.h"
#include "runtime/machine_port.h"
#include "runtime/pihole_controller.h"

#include <QPointer>
#include <QScopeGuard>

#include <utility>

namespace corvane {

namespace {

/// Whether an answer on this Mac can be Pi-hole's: without a running container it may come from the name service of
/// Colima's virtual machine, whose ports are forwarded too.
QCoro::Task<bool> mayAnswer(ContainerState container)
{
    const bool knownToBeDown =
        container.kind() == ContainerState::Kind::Stopped || container.kind() == ContainerState::Kind::Missing;
    if (!knownToBeDown) co_return true;
    const MachinePort port = co_await MachinePort::ask();
    co_return port.holder() != MachinePort::Holder::NameService;
}

/// Whether a new container takes the place of the old one.
bool isReplaced(Activities underWay)
{
    return static_cast<bool>(underWay & (Activity::Exchange | Activity::StartPihole));
}

const QString kNotMadeAnew =
    QStringLiteral("Corvane has a newer admin password than Pi-hole: the start that was to bring it "
                   "did not come to its end. Press 'Start Pi-hole' in step %1 of the wizard.")
        .arg(stepNumber(WizardStep::Pihole));
constexpr std::chrono::seconds kStartPatience{10};
constexpr std::chrono::seconds kBetweenLooks{1};

} // namespace

Flow<> AppModel::refreshStatus(Stats stats)
{
    if (m_refreshing) {
        if (m_refreshNext != Stats::Include) m_refreshNext = stats;
        co_return;
    }
    m_refreshing = true;
    m_refreshNext.reset();
    const auto done = qScopeGuard([model = QPointer<AppModel>(this)] {
        if (model) model->m_refreshing = false;
    });
    co_await look(stats);
    // It was asked for in between because something had changed.
    while (m_refreshNext) {
        const Stats next = *std::exchange(m_refreshNext, std::nullopt);
        co_await look(next);
    }
}

Flow<> AppModel::look(Stats stats)
{
    const int changes = m_activities.changesBegun();
    const bool free = m_activities.mayBegin(Activity::StartContainer);
    const bool replaced = isReplaced(m_activities.underWay());
    // None of the three needs another's answer: a pass takes as long as the slowest.
    const auto asksContainer = PiholeController::containerState();
    const auto asksPihole = PiholeController::ask(QStringLiteral("example.com"));
    const auto asksResolver = DNSConfigurator::resolverReport();
    const ContainerState container = co_await asksContainer;
    // Between the old container and the new one there is none for a moment.
    const bool between = container.isMissing() && (replaced || isReplaced(m_activities.underWay()));
    if (!between) setContainerState(container);

    const DigResult reply = co_await asksPihole;
    DnsTrouble trouble = co_await dnsTroubleBehind(reply, container.isRunning());
    const bool fromPihole = reply.answered() && co_await mayAnswer(container);
    // What Colima's machine answers by itself ends when Pi-hole starts.
    if (reply.answered() && !fromPihole) trouble = DnsTrouble::Silent;
    const ResolverReport report = co_await asksResolver;
    // While Pi-hole starts, a question that gets lost says nothing.
    if (starting() && !fromPihole) co_return;
    // One old answer is usual: Pi-hole gives it while it asks again.
    m_oldAnswers = reply.stale() ? m_oldAnswers + 1 : 0;
    const bool onlyOld = trouble == DnsTrouble::None && m_oldAnswers > 1;
    if (fromPihole) m_day.countOwn();
    publishLook(fromPihole, onlyOld ? DnsTrouble::OldAnswers : trouble, report);
    followOutage(free && changes == m_activities.changesBegun());

    if (!answering()) {
        setSummary(std::nullopt);
        setBlocking(std::nullopt);
        if (apiMessage().startsWith(kPaused)) setApiMessage({});
        m_repair.forgetRules();
    } else if (stats == Stats::Include && mayCount()) {
        co_await refreshStats();
    }
    co_await readHistory(stats);
}

/// Asks now, whatever the last look has found.
Flow<bool> AppModel::answersNow()
{
    const ContainerState container = co_await PiholeController::containerState();
    const DigResult reply = co_await PiholeController::ask(QStringLiteral("example.com"));
    const bool fromPihole = reply.answered() && co_await mayAnswer(container);
    if (fromPihole) m_day.countOwn();
    co_return fromPihole;
}

/// Whether there is a password to read the counters with, or may be one.
bool AppModel::mayCount() const { return !(passwordKnown() && adminPassword().isEmpty()); }

/// All at once, so that no colour shows that never was.
void AppModel::publishLook(bool answers, DnsTrouble trouble, const ResolverReport &report)
{
    // What kept it from starting is over.
    if (answers && !answering() && statusChecked()) tellStart({}, {});
    if (answers && notice() == kColimaDidNotStart) setNotice({});
    const bool dockerAnswered = containerState().kind() != ContainerState::Kind::DockerDown;
    if (dockerAnswered && notice() == kDockerIsLate) setNotice({});
    Qt::beginPropertyUpdateGroup();
    setAnswering(answers);
    setDnsTrouble(trouble);
    setResolverReport(report);
    setUsedByMac(report.firstIsPihole);
    setStatusChecked(true);
    Qt::endPropertyUpdateGroup();
    noteProtection();
}

Flow<> AppModel::refreshAfterStart()
{
    const int watch = ++m_newestWatch;
    const ContainerState container = co_await PiholeController::containerState();
    if (watch != m_newestWatch) co_return;
    setContainerState(container);
    setStarting(container.isRunning());
    if (starting()) setStatusChecked(false);

    const QString silence = PiholeAPIError::unreachable().description();
    const Clock::Instant deadline = m_clock.now() + kStartPatience;
    bool told = false;
    while (starting() && !told) {
        const bool answers = co_await PiholeController::knowsItsName();
        if (watch != m_newestWatch) co_return;
        // It may have been the last answer before the restart; then this look finds nothing, and says nothing.
        if (answers) co_await refreshStatus(Stats::Include);
        if (watch != m_newestWatch) co_return;
        told = answers && statusChecked();
        if (told || m_clock.now() >= deadline) break;
        co_await m_clock.pause(kBetweenLooks);
        if (watch != m_newestWatch) co_return;
    }
    setStarting(false);
    if (!told) co_await refreshStatus(Stats::Include);
    // The web server comes a moment after the resolver.
    while (answering() && apiMessage() == silence && m_clock.now() < deadline) {
        co_await m_clock.pause(kBetweenLooks);
        if (watch != m_newestWatch) co_return;
        co_await refreshStats();
    }
}

/// Pi-hole does not start any more: somebody has stopped it.
void AppModel::endWatch()
{
    ++m_newestWatch;
    setStarting(false);
}

Flow<> AppModel::refreshStats()
{
    configureAPI();
    const auto counters = co_await m_api.summary();
    if (!counters) {
        tellApi({}, counters.error());
        co_return;
    }
    setSummary(*counters);

    const auto state = co_await m_api.blocking();
    if (!state) {
        tellApi({}, state.error());
        co_return;
    }
    setBlocking(*state);
    tellApi({}, std::nullopt);
    m_newPassword.end();
    co_await keepPauseShort();
    co_await keepBrowserRule();
}

/// What the API had to say, and beside it what that means where the words themselves do not say.
void AppModel::tellApi(const QString &about, const std::optional<PiholeAPIError> &error)
{
    setApiMessage(error ? about + error->description() : about);
    const bool refused = error && error->kind() == PiholeAPIError::Kind::Unauthorized;
    const QString advice = error ? error->advice() : QString();
    setNote(QStringLiteral("api"), refused && m_newPassword.isOnItsWay() ? kNotMadeAnew : advice);
}

} // namespace corvane
