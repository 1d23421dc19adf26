#include "exec/operation_runner.h"

#include "exec/plain_text.h"

#include <QPointer>

#include <algorithm>

namespace corvane {

OperationRunner::OperationRunner(Wording wording, Reader reader, QObject *parent)
    : QObject(parent)
    , m_wording(std::move(wording))
    , m_reader(std::move(reader))
{}

OperationRunner::~OperationRunner()
{
    if (m_current) m_current->cancel();
}

void OperationRunner::start(const QString &title, const CommandSteps &steps, OnFinish onFinish)
{
    if (m_running) return;
    begin(title);
    reset();
    m_cancelRequested = false;
    runSteps(this, steps, std::move(onFinish));
}

// No member: it would use `this` after the runner was deleted. Here every access goes through a QPointer.
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
        runner->m_stepStart = runner->m_lineCount;
        const auto streaming = std::make_shared<StreamingCommand>();
        runner->m_current = streaming;
        if (runner->m_cancelRequested) streaming->cancel();
        const Command command = step.command();
        const std::optional<int> status = co_await streaming->run(command, appendLines);
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
    m_failedStep = {step, linesSince(m_stepStart)};
    append(QStringLiteral("Command ended with status %1.").arg(status.value_or(-1)));
    return true;
}

QStringList OperationRunner::linesSince(qint64 count) const
{
    return m_lines.last(std::min(m_lineCount - count, qint64(m_lines.size())));
}

void OperationRunner::finish(bool succeeded)
{
    if (!succeeded && m_cancelRequested) {
        setFailure(QStringLiteral("Cancelled."), {});
    } else if (!succeeded) {
        const FailureReading nothing;
        setFailure(m_wording(m_lines.join(u'\n')), m_reader ? m_reader(m_failedStep) : nothing);
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
    for (const QString &line : batch.lines)
        m_lines += plainLine(line);
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
    setFailure(std::nullopt, {});
    setSucceeded(false);
}

// Nobody may see the new title, or the log already empty, before the operation runs: it would have ended then.
void OperationRunner::begin(const QString &title)
{
    const bool wasEnded = ended();
    const bool renamed = title != m_title;
    m_title = title;
    m_running = true;
    if (renamed) Q_EMIT titleChanged();
    Q_EMIT runningChanged();
    if (wasEnded) Q_EMIT endedChanged();
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

void OperationRunner::setFailure(const std::optional<QString> &summary, const FailureReading &reading)
{
    if (m_failureSummary == summary && m_failure == reading) return;
    m_failureSummary = summary;
    m_failure = reading;
    Q_EMIT failureSummaryChanged();
}

} // namespace corvane
