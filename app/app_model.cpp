#include "app/app_model.h"

#include "app/needed_tools.h"
#include "app/password_work.h"
#include "app/wizard_steps.h"
#include "runtime/colima_manager.h"
#include "runtime/docker_cli.h"
#include "runtime/tool_failures.h"

#include <QTimer>

#include <algorithm>

namespace corvane {

namespace {

constexpr std::chrono::seconds kQuickTool{10};
constexpr std::chrono::seconds kPollInterval{15};

} // namespace

const QStringList &AppModel::stepTitles()
{
    static const QStringList titles = [] {
        QStringList all;
        for (const WizardStepRow &row : kWizardSteps)
            all << QString::fromLatin1(row.title);
        return all;
    }();
    return titles;
}

AppModel::AppModel(const Surroundings &surroundings)
    : AppState(surroundings.settings, surroundings.loginItem)
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
    // From the event loop: by then the dot is there, whatever the keychain asks.
    QTimer::singleShot(0, this, [this] { launch(readPassword(*this)); });
    connect(&m_activities, &CurrentActivities::changed, this, [this] {
        setUnderWay(m_activities.underWay());
        setBusy(m_activities.busyKeys());
    });
    followBrowserRule();
    connect(&m_repair, &Repair::databaseBrokenChanged, this, [this] { setListsDamaged(m_repair.databaseBroken()); });
    connect(this, &AppModel::summaryChanged, this, [this] {
        followListsRun();
        launch(followLeftListRun());
    });
    connect(&m_comeback, &Comeback::startsAgainChanged, this, [this] { launch(comeBack()); });
    connect(&m_followOp, &OperationRunner::lineCountChanged, this, [this] {
        if (m_showsFollowedLog) Q_EMIT logTextChanged();
    });
    connect(this, &AppModel::iconChanged, this, &AppModel::noteProtection);
    connect(this, &AppModel::blockingChanged, this, &AppModel::noteProtection);
}

AppModel::~AppModel() = default;

Flow<> AppModel::bootstrap()
{
    co_await refreshTools();
    configureAPI();
    launch(showRestoreScript());
    co_await poll();
}

Flow<> AppModel::poll()
{
    for (int pass = 0;; ++pass) {
        // Homebrew always comes by another way than Corvane, and the others may.
        const bool came = !operationRunning() && hasToolCome(*this);
        if (came) co_await refreshTools();
        const Stats stats = pass % 2 == 0 ? Stats::Include : Stats::Leave;
        const bool answered = answering() || !statusChecked();
        // A look that is under way will do.
        if (!m_refreshing && !starting()) co_await refreshStatus(stats);
        if (answering() && mayCount()) co_await m_repair.endPermissions();
        // Counters that went with the answers come back with them.
        if (!answered && answering() && stats == Stats::Leave && mayCount()) co_await refreshStats();
        co_await putRight();
        co_await m_clock.pause(kPollInterval);
    }
}

Flow<> AppModel::refreshTools()
{
    for (const NeededTool &tool : kNeededTools)
        (this->*tool.setIsThere)(tool.find().has_value());

    const int search = ++m_toolSearches;
    const EngineAnswer engine = co_await DockerCLI::engine();
    // Of two searches at once, the later one knows better.
    if (search < m_newestToolsFound) co_return;
    m_newestToolsFound = search;
    setDockerWorks(engine.answers);
    setEngineProblem(engine.problem);
    bool composeAnswers = false;
    if (engine.answers) {
        const QStringList version{QStringLiteral("compose"), QStringLiteral("version")};
        const CommandResult result = co_await DockerCLI::run(version, kQuickTool);
        composeAnswers = result.succeeded();
    }
    if (search == m_newestToolsFound) setComposeAvailable(composeAnswers);
}

/// A list run, of Corvane's or not, has replaced Pi-hole's rules by those of its beginning.
void AppModel::followListsRun()
{
    if (!summary() || summary()->listsRun == m_listsRun) return;
    m_listsRun = summary()->listsRun;
    m_repair.onRulesReplaced();
}

void AppModel::configureAPI()
{
    m_api.configure(webPort(), passwordKnown() ? std::optional(adminPassword()) : std::nullopt);
}

void AppModel::go(int step)
{
    setStep(std::clamp(step, 0, kLastStep));
    QSet<int> seen = visited();
    seen.insert(this->step());
    setVisited(seen);
}

bool AppModel::isStepDone(int step) const
{
    const bool known = step >= 0 && step <= kLastStep;
    return isProven(kWizardSteps.at(static_cast<std::size_t>(known ? step : kLastStep)), *this);
}

bool AppModel::mayBegin(Activity activity, void (AppModel::*say)(const QString &))
{
    const QString obstacle = m_activities.obstacle(activity);
    if (!obstacle.isEmpty()) (this->*say)(obstacle);
    return m_activities.mayBegin(activity);
}

void AppModel::setNote(const QString &key, const QString &text)
{
    QVariantMap all = notes();
    if (text.isEmpty())
        all.remove(key);
    else
        all.insert(key, text);
    setNotes(all);
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
