#include "exec/operation_runner.h"

#include <QPointer>

#include <algorithm>

namespace corvane {

OperationRunner::OperationRunner(Wording wording, QObject *parent)
    : QObject(parent)
    , m_wording(std::move(wording))
{}

OperationRunner::~OperationRunner()
{
    if (m_current) m_current->cancel();
}

void OperationRunner::start(const QString &title, const CommandSteps &steps, OnFinish onFinish)
{
    if (m_running) return;
    reset();
    m_cancelRequested = false;
    setTitle(title);
    setRunning(true);
    runSteps(this, steps, std::move(onFinish));
}

// A member would read the runner through `this` after it died; here every use goes through a pointer that knows.
QCoro::Task<> OperationRunner::runSteps(OperationRunner *self, CommandSteps steps, OnFinish onFinish)
{
    const QPointer<OperationRunner> runner(self);
    const auto appendLines = [runner](const LineBatch &batch) {
        if (runner) runner->appendBatch(batch);
    };
    bool stopped = false;
    for (const CommandStep &step : steps) {
        stopped = runner->m_cancelRequested;
        if (stopped) break;
        runner->append(QStringLiteral("> ") + step.label);
        const auto command = std::make_shared<StreamingCommand>();
        runner->m_current = command;
        if (runner->m_cancelRequested) command->cancel();
        const std::optional<int> status = co_await command->run(step.exe, step.args, step.env, appendLines);
        if (!runner) co_return;
        runner->m_current.reset();
        stopped = runner->stopsAfter(step, status);
        if (stopped) break;
    }
    runner->finish(!stopped);
    if (onFinish) onFinish(!stopped);
}

bool OperationRunner::stopsAfter(const CommandStep &step, std::optional<int> status)
{
    if (m_cancelRequested) return true;
    if (status == 0 || step.allowFailure) return false;
    append(QStringLiteral("Command ended with status %1.").arg(status.value_or(-1)));
    return true;
}

void OperationRunner::finish(bool succeeded)
{
    if (!succeeded) {
        setFailureSummary(m_cancelRequested ? QStringLiteral("Cancelled.") : m_wording(m_lines.join(u'\n')));
    }
    setSucceeded(succeeded);
    setRunning(false);
}

void OperationRunner::cancel()
{
    m_cancelRequested = true;
    if (m_current) m_current->cancel();
}

void OperationRunner::append(const QString &line) { appendBatch({{line}, 0}); }

void OperationRunner::appendBatch(const LineBatch &batch)
{
    const qsizetype appended = batch.lines.size();
    const qsizetype removed = std::max<qsizetype>(0, m_lines.size() + appended - kMaxLines);
    m_lines += batch.lines;
    m_lines.remove(0, removed);
    m_lineCount += batch.dropped + appended;
    Q_EMIT linesChanged(static_cast<int>(removed), static_cast<int>(appended));
    Q_EMIT lineCountChanged();
}

void OperationRunner::reset()
{
    if (!m_lines.isEmpty() || m_lineCount != 0) {
        m_lines.clear();
        m_lineCount = 0;
        Q_EMIT linesReset();
        Q_EMIT lineCountChanged();
    }
    setFailureSummary(std::nullopt);
    setSucceeded(false);
}

void OperationRunner::setTitle(const QString &title)
{
    if (m_title == title) return;
    const bool wasEnded = ended();
    m_title = title;
    Q_EMIT titleChanged();
    if (ended() != wasEnded) Q_EMIT endedChanged();
}

void OperationRunner::setRunning(bool running)
{
    if (m_running == running) return;
    const bool wasEnded = ended();
    m_running = running;
    Q_EMIT runningChanged();
    if (ended() != wasEnded) Q_EMIT endedChanged();
}

void OperationRunner::setSucceeded(bool succeeded)
{
    if (m_succeeded == succeeded) return;
    m_succeeded = succeeded;
    Q_EMIT succeededChanged();
}

void OperationRunner::setFailureSummary(const std::optional<QString> &summary)
{
    if (m_failureSummary == summary) return;
    m_failureSummary = summary;
    Q_EMIT failureSummaryChanged();
}

} // namespace corvane
