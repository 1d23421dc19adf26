#include "app/app_model.h"

#include "app/password_work.h"
#include "exec/tools.h"
#include "runtime/colima_manager.h"
#include "runtime/docker_cli.h"
#include "runtime/tool_failures.h"

#include <QPointer>
#include <QTimer>

#include <algorithm>

namespace corvane {

namespace {

constexpr double kQuickTool = 10; // seconds
constexpr std::chrono::seconds kPollInterval{15};

} // namespace

const QStringList &AppModel::stepTitles()
{
    static const QStringList titles{
        QStringLiteral("Welcome"),
        QStringLiteral("Check this Mac"),
        QStringLiteral("Install Colima and Docker"),
        QStringLiteral("Start Pi-hole"),
        QStringLiteral("Test blocking"),
        QStringLiteral("Point this Mac at Pi-hole"),
        QStringLiteral("Check your browser"),
        QStringLiteral("Done"),
    };
    return titles;
}

AppModel::AppModel(const Surroundings &surroundings)
    : m_settings(surroundings.settings)
    , m_dialogs(surroundings.dialogs)
    , m_workspace(surroundings.workspace)
    , m_loginItem(surroundings.loginItem)
    , m_clock(surroundings.clock)
    , m_releaseFeed(surroundings.releaseFeed)
    , m_installOp(DockerCLI::friendlyError, ToolFailures::read)
    , m_startOp(DockerCLI::friendlyError, ToolFailures::read)
    , m_maintOp(DockerCLI::friendlyError, ToolFailures::read)
    , m_followOp(DockerCLI::friendlyError)
{
    const PersistedSettings stored = PersistedSettings::load(m_settings);
    m_webPort = stored.webPort;
    m_pinnedTag = stored.pinnedTag;
    m_autostartColima = stored.autostartColima;
    m_wizardFinished = stored.wizardFinished;
    m_browserReadAllowed = stored.browserReadAllowed;
    m_showWizard = !stored.wizardFinished;
    // From the event loop: by then the dot stands, whatever the keychain asks.
    QTimer::singleShot(0, this, [this] { launch(readPassword(this)); });
    m_launchAtLogin = m_loginItem.status() == LoginItem::Status::Enabled;
    bindDerivedFields();
    connect(&m_followOp, &OperationRunner::lineCountChanged, this, [this] {
        if (m_showsFollowedLog) Q_EMIT logTextChanged();
    });
}

AppModel::~AppModel() = default;

void AppModel::bindDerivedFields()
{
    m_icon.setBinding([this] { return menuIcon(m_statusChecked, m_answering, m_usedByMac); });
    m_statusLine.setBinding([this] { return corvane::statusLine(m_icon, m_containerState); });
    m_showDeadDNSBanner.setBinding(
        [this] { return m_statusChecked && m_usedByMac && !m_answering && !m_bannerDismissed; });
    m_setupSucceeded.setBinding([this] {
        return passed(m_outcomes, QStringLiteral("pihole")) && passed(m_outcomes, QStringLiteral("system"));
    });
    m_dashboardURL.setBinding(
        [this] { return QUrl(QStringLiteral("http://127.0.0.1:%1/admin").arg(m_webPort.value())); });
}

QCoro::Task<> AppModel::bootstrap()
{
    const QPointer<AppModel> alive(this);
    co_await refreshTools();
    if (!alive) co_return;
    configureAPI();
    co_await poll();
}

QCoro::Task<> AppModel::poll()
{
    const QPointer<AppModel> alive(this);
    for (bool includeStats = true; alive; includeStats = !includeStats) {
        co_await refreshStatus(includeStats);
        if (!alive) co_return;
        co_await m_clock.pause(kPollInterval);
    }
}

QCoro::Task<> AppModel::refreshTools()
{
    const QPointer<AppModel> alive(this);
    setHasBrew(Tools::find(QStringLiteral("brew"), ColimaManager::homebrewDirs()).has_value());
    setHasDocker(DockerCLI::find().has_value());
    setHasColima(Tools::find(QStringLiteral("colima"), ColimaManager::homebrewDirs()).has_value());

    bool engineAnswers = false;
    bool composeAnswers = false;
    if (hasDocker()) {
        const QStringList info{QStringLiteral("info"), QStringLiteral("--format"),
                               QStringLiteral("{{.ServerVersion}}")};
        const CommandResult result = co_await DockerCLI::run(info, kQuickTool);
        engineAnswers = result.succeeded();
    }
    if (engineAnswers) {
        const QStringList version{QStringLiteral("compose"), QStringLiteral("version")};
        const CommandResult result = co_await DockerCLI::run(version, kQuickTool);
        composeAnswers = result.succeeded();
    }
    if (!alive) co_return;
    setDockerWorks(engineAnswers);
    setComposeAvailable(composeAnswers);
}

void AppModel::configureAPI()
{
    m_api.configure(webPort(), passwordKnown() ? std::optional(adminPassword()) : std::nullopt);
}

void AppModel::go(int step)
{
    setStep(std::clamp(step, 0, kStepCount - 1));
    QSet<int> seen = visited();
    seen.insert(this->step());
    setVisited(seen);
}

bool AppModel::isStepDone(int step) const
{
    const auto hasPassed = [this](const char *test) { return passed(outcomes(), QString::fromLatin1(test)); };
    switch (step) {
    case 0:
        return visited().contains(1);
    case 1: {
        const CheckRows rows = systemChecks();
        return !rows.isEmpty() &&
               std::ranges::none_of(rows, [](const CheckRow &row) { return row.state == CheckState::Failed; });
    }
    case 2:
        return dockerWorks();
    case 3:
        return hasPassed("pihole");
    case 4:
        return hasPassed("blocking");
    case 5:
        return hasPassed("system");
    case 6:
        return hasPassed("browser");
    default:
        return setupSucceeded();
    }
}

void AppModel::markBusy(const QString &key)
{
    ++m_busyCounts[key];
    setBusy(QSet<QString>(m_busyCounts.keyBegin(), m_busyCounts.keyEnd()));
}

void AppModel::clearBusy(const QString &key)
{
    if (--m_busyCounts[key] <= 0) m_busyCounts.remove(key);
    setBusy(QSet<QString>(m_busyCounts.keyBegin(), m_busyCounts.keyEnd()));
}

void AppModel::recordOutcome(const QString &test, bool passed, const QString &summary)
{
    Outcomes results = outcomes();
    results.insert(test, {passed, summary, QDateTime::currentDateTime()});
    setOutcomes(results);
}

bool AppModel::operationRunning() const { return m_installOp.running() || m_startOp.running() || m_maintOp.running(); }

bool passed(const Outcomes &outcomes, const QString &test)
{
    const auto found = outcomes.find(test);
    return found != outcomes.end() && found->passed;
}

} // namespace corvane
