#include "app/app_model.h"
#include "app/file_work.h"
#include "facts/container_name.h"
#include "runtime/docker_cli.h"
#include "runtime/pihole_controller.h"

namespace corvane {

namespace {

constexpr int kLoadedLines = 300;

QStringList followArguments()
{
    return {QStringLiteral("logs"), QStringLiteral("--follow"), QStringLiteral("--tail"), QStringLiteral("100"),
            kContainerName};
}

} // namespace

QString AppModel::logText() const { return m_showsFollowedLog ? m_followOp.lines().join(u'\n') : m_loadedLog; }

Flow<> AppModel::loadLogs()
{
    if (following() || !m_activities.mayBegin(Activity::LoadLogs)) co_return;
    const ActivityMark mark(m_activities, Activity::LoadLogs);
    co_await boundTo(mark);
    const QString text = co_await PiholeController::logs(kLoadedLines);
    if (following()) co_return;
    m_loadedLog = text;
    m_showsFollowedLog = false;
    Q_EMIT logTextChanged();
}

void AppModel::setFollowing(bool follow)
{
    publishFollowing(follow);
    if (!follow) {
        m_followOp.cancel();
    } else if (!m_followOp.running()) {
        this->follow();
    }
    // One that is still being cancelled is started again by onFollowerEnded().
}

void AppModel::follow()
{
    const std::optional<QString> docker = DockerCLI::find();
    if (!docker) {
        publishFollowing(false);
        setNotice(DockerCLI::kNotFound);
        return;
    }
    CommandStep step;
    step.args = followArguments();
    step.label = QStringLiteral("docker ") + step.args.join(u' ');
    step.exe = *docker;
    step.streams = Streams::Together;
    m_showsFollowedLog = true;
    m_followOp.start(QStringLiteral("Following logs"), {step}, [this](bool) { onFollowerEnded(); });
    Q_EMIT logTextChanged();
}

void AppModel::onFollowerEnded()
{
    const bool wantedAgain = following() && m_followOp.failureSummary() == QStringLiteral("Cancelled.");
    if (wantedAgain)
        follow();
    else
        publishFollowing(false);
}

Flow<> AppModel::saveLogs()
{
    FilePanel panel;
    panel.proposedName = QStringLiteral("pihole-log.txt");
    const std::optional<QString> path = co_await m_dialogs.choose(panel);
    if (!path) co_return;
    const auto saved = co_await writeFile(*path, logText().toUtf8());
    const QString failed = QStringLiteral("Could not save the log: ");
    if (!saved)
        tellApi(failed + saved.error(), std::nullopt);
    else if (apiMessage().startsWith(failed))
        tellApi({}, std::nullopt);
}

} // namespace corvane
