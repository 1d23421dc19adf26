#include "app/app_model.h"
#include "app/container_steps.h"
#include "app/file_work.h"
#include "app/operation.h"
#include "exec/command_runner.h"
#include "runtime/pihole_controller.h"

#include <QFile>

namespace corvane {

namespace {

constexpr std::chrono::milliseconds kBetweenLooks{20};
const QString kVersion = QStringLiteral("version"); // the note beside the pinned one
const QString kIsBack = QStringLiteral("Version %1 is back.");

/// How a container of a new version does.
enum class Fate { Unclear, Proven, Failing };

Fate fateOf(const ContainerState &container)
{
    const QString &text = container.text();
    if (container.isRunning()) {
        if (text == u"healthy" || text == u"none") return Fate::Proven;
        return text == u"unhealthy" ? Fate::Failing : Fate::Unclear;
    }
    // One that was stopped on purpose is "exited"; one that ends by itself is started again and again.
    return text == u"restarting" || text == u"created" || text == u"dead" ? Fate::Failing : Fate::Unclear;
}

/// How the container differs from what is pinned, as a sentence; empty when it does not.
QString difference(const DeployedContainer &deployed, const QString &tag, int webPort)
{
    if (!deployed.exists) return QStringLiteral("There is no container of Pi-hole at the moment.");
    if (deployed.tag.isEmpty()) return QStringLiteral("The container was made from another image than Pi-hole's.");
    if (deployed.tag != tag) return QStringLiteral("The container is of version %1.").arg(deployed.tag);
    if (deployed.webPort != webPort)
        return QStringLiteral("The container has its admin page on another port than %1.").arg(webPort);
    return {};
}

} // namespace

void AppModel::stopEverything()
{
    m_activities.close();
    for (OperationRunner *runner : {&m_followOp, &m_installOp, &m_startOp, &m_maintOp})
        runner->cancel();
    CommandRunner::terminateAll();
}

Flow<> AppModel::windDown(Clock::Duration limit)
{
    stopEverything();
    const Clock::Instant deadline = m_clock.now() + limit;
    while (m_activities.underWay().contains(Activity::Exchange) && m_clock.now() < deadline)
        co_await m_clock.pause(kBetweenLooks);
}

Flow<> AppModel::putRight()
{
    const ContainerState seen = containerState();
    const bool knows = seen.kind() != ContainerState::Kind::DockerDown && m_compared != seen;
    if (!knows || !QFile::exists(PiholeController::composeFile())) co_return;
    const int changes = m_activities.changesBegun();
    const std::optional<DeployedContainer> deployed = co_await PiholeController::deployed();
    if (!deployed || deployed->exists == seen.isMissing()) co_return;
    // What has been changed since, or is being changed, says nothing.
    const bool stands = changes == m_activities.changesBegun() && containerState() == seen;
    if (!stands || !m_activities.mayBegin(Activity::PutRight)) co_return;

    const ActivityMark mark(m_activities, Activity::PutRight);
    co_await boundTo(mark);
    const QString left = m_left.tag();
    const bool cutOff = !left.isEmpty() && pinnedTag() != left && (!deployed->exists || deployed->tag == left);
    if (cutOff) setPinnedTag(left);
    if (seen.isRunning() && WebPorts::contain(deployed->webPort) && deployed->webPort != webPort()) {
        setWebPort(deployed->webPort);
        configureAPI();
        setNotice(QStringLiteral("The web port is %1 again, where Pi-hole runs.").arg(webPort()));
    }
    co_await putFilesRight();
    if (cutOff) tellOfRollback({});
    const bool clear = judge(*deployed);
    if (clear && passwordKnown()) m_compared = seen;
}

Flow<> AppModel::putFilesRight()
{
    if (PiholeController::filesSay(pinnedTag(), webPort(), adminPassword())) co_return;
    const auto written = co_await writeFiles();
    // An earlier try has said why not.
    if (!written && notice().isEmpty()) setNotice(kFilesNotWritten + written.error());
}

/// Says how the container differs from what is pinned, and offers the way back; whether all is clear now.
bool AppModel::judge(const DeployedContainer &deployed)
{
    const QString other = difference(deployed, pinnedTag(), webPort());
    const bool setUp = deployed.exists || wizardFinished() || !m_left.tag().isEmpty();
    setNote(kVersion, setUp ? other : QString());
    if (other.isEmpty()) m_left.settle(pinnedTag());
    if (other.isEmpty() && !m_left.tag().isEmpty()) return judgeNewVersion();
    setWayBack(setUp && !other.isEmpty() ? pinnedTag() : QString());
    return true;
}

/// For a start that finds no container, before anything was compared: what Corvane has set up can be made again.
void AppModel::findWayBack()
{
    if (!wayBack().isEmpty() || !QFile::exists(PiholeController::composeFile())) return;
    const QString left = m_left.tag();
    if (!left.isEmpty()) setPinnedTag(left); // an update was cut off
    [[maybe_unused]] const bool clear = judge({});
}

/// The container is of the version that an update brought; it has to prove itself.
bool AppModel::judgeNewVersion()
{
    const Fate fate = fateOf(containerState());
    // The tests give it the time that it may take.
    if (fate == Fate::Unclear || m_activities.underWay().contains(Activity::PiholeTests)) return false;
    const bool complained = !wayBack().isEmpty();
    setWayBack(fate == Fate::Failing ? m_left.good() : QString());
    if (fate == Fate::Failing) {
        setUpdateMessage(QStringLiteral("Version %1 was installed, but Pi-hole does not get healthy with it: its "
                                        "container is '%2'.")
                             .arg(pinnedTag(), containerState().text()));
    } else {
        m_left.forget();
        if (complained) setUpdateMessage(QStringLiteral("Updated to %1.").arg(pinnedTag()));
    }
    return true;
}

Flow<> AppModel::bringBack()
{
    const QString tag = wayBack();
    if (tag.isEmpty() || !mayBegin(Activity::BringBack, &AppModel::setUpdateMessage)) co_return;
    std::optional<ActivityMark> mark(std::in_place, m_activities, Activity::BringBack);
    co_await boundTo(*mark);
    const QString problem = co_await remake(tag);
    setUpdateMessage(problem.isEmpty() ? kIsBack.arg(tag) : problem);
    mark.reset(); // nothing that follows is in the way of anything
    co_await lookAfterExchange(problem.isEmpty());
    co_await putRight();
}

/// For a start that finds no container: makes the one again that should be there.
Flow<> AppModel::startAnew()
{
    const QString tag = wayBack();
    const QString problem = co_await remake(tag);
    tellStart(problem, {});
    if (!problem.isEmpty()) {
        co_await refreshStatus(Stats::Include);
        co_return;
    }
    setUpdateMessage(kIsBack.arg(tag));
    co_await refreshAfterStart();
}

/// Pins the version and makes its container again; answers why it could not, or nothing.
Flow<QString> AppModel::remake(QString tag)
{
    const WantedContainer wanted{.tag = tag, .webPort = webPort(), .compose = composeAvailable()};
    const auto steps = co_await containerSteps(wanted);
    if (!steps) co_return steps.error();
    const ActivityMark exchange(m_activities, Activity::Exchange);
    m_compared.reset();
    const QString unwritten = co_await pin(tag);
    if (!unwritten.isEmpty()) co_return kComposeNotWritten + unwritten;
    const QString title = QStringLiteral("Bringing version %1 back").arg(tag);
    const bool back = exchange.stands() && co_await perform(&m_maintOp, title, *steps);
    if (back) co_return {};
    co_return QStringLiteral("Version %1 was not brought back: ").arg(tag) + m_maintOp.failureSentence();
}

} // namespace corvane
