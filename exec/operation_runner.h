#pragma once

#include "exec/failure_reading.h"
#include "exec/streaming_command.h"

#include <QObject>

#include <functional>
#include <memory>

namespace corvane {

/// Runs a titled list of steps one after another into a live log of at most 3000 lines.
///
/// Lives on the main thread. Title, log and result stay until the next start.
class OperationRunner : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString title READ title NOTIFY titleChanged)
    Q_PROPERTY(bool running READ running NOTIFY runningChanged)
    Q_PROPERTY(bool succeeded READ succeeded NOTIFY succeededChanged)
    Q_PROPERTY(bool ended READ ended NOTIFY endedChanged)
    Q_PROPERTY(QString failureSummary READ failureText NOTIFY failureSummaryChanged)
    Q_PROPERTY(QString failureSentence READ failureSentence NOTIFY failureSummaryChanged)
    Q_PROPERTY(QString failureLine READ failureLine NOTIFY failureSummaryChanged)
    Q_PROPERTY(qint64 lineCount READ lineCount NOTIFY lineCountChanged)

public:
    static constexpr int kMaxLines = LineBatch::kMostLines;

    /// Turns the log of a failed operation into one sentence.
    using Wording = std::function<QString(const QString &log)>;
    /// Finds the cause in the lines of the step that failed, where that is sure.
    using Reader = std::function<FailureReading(const FailedStep &failed)>;
    using OnFinish = std::function<void(bool succeeded)>;

    explicit OperationRunner(Wording wording, Reader reader = {}, QObject *parent = nullptr);
    ~OperationRunner() override;

    [[nodiscard]] const QStringList &lines() const { return m_lines; }
    [[nodiscard]] const QString &title() const { return m_title; }
    [[nodiscard]] bool running() const { return m_running; }
    [[nodiscard]] bool succeeded() const { return m_succeeded; }
    /// Has run and runs no more.
    [[nodiscard]] bool ended() const { return !m_running && !m_title.isEmpty(); }
    /// Ended because somebody cancelled it.
    [[nodiscard]] bool cancelled() const { return ended() && !m_succeeded && m_cancelRequested; }
    [[nodiscard]] const std::optional<QString> &failureSummary() const { return m_failureSummary; }
    [[nodiscard]] QString failureText() const { return m_failureSummary.value_or(QString()); }
    /// What is known of the cause of the last failure; nothing before one, or when it is not sure.
    [[nodiscard]] const FailureReading &failure() const { return m_failure; }
    /// What the user reads: the cause where it is known, else the summary.
    [[nodiscard]] QString failureSentence() const
    {
        return m_failure.sentence.isEmpty() ? failureText() : m_failure.sentence;
    }
    /// The tool's own line that carries the cause, where it is known.
    [[nodiscard]] const QString &failureLine() const { return m_failure.line; }
    /// How many lines were ever appended since the last reset, those that the cap has dropped included.
    [[nodiscard]] qint64 lineCount() const { return m_lineCount; }

    /// Starts the steps; ignored while an operation runs. `onFinish` is called once at the end.
    void start(const QString &title, const CommandSteps &steps, OnFinish onFinish = {});
    /// Asks the running step to end and starts no further one. The operation ends a little later, and `onFinish` is
    /// called then. Does nothing while idle.
    Q_INVOKABLE void cancel();
    /// Adds a line of Corvane's own to the log, also while idle.
    void append(const QString &line);
    /// Empties the log and forgets the result; the title stays, and what runs goes on.
    void reset();

Q_SIGNALS:
    void titleChanged();
    void runningChanged();
    void succeededChanged();
    void endedChanged();
    void failureSummaryChanged();
    void lineCountChanged();
    /// `appended` lines were added at the end after `removed` lines went from the front.
    void linesChanged(int removed, int appended);
    void linesReset();

private:
    static QCoro::Task<> runSteps(OperationRunner *self, CommandSteps steps, OnFinish onFinish);
    void appendBatch(const LineBatch &batch);
    [[nodiscard]] bool stopsAfter(const CommandStep &step, std::optional<int> status);
    [[nodiscard]] QStringList linesSince(qint64 count) const;
    void finish(bool succeeded);
    void begin(const QString &title);
    void setRunning(bool running);
    void setSucceeded(bool succeeded);
    void setFailure(const std::optional<QString> &summary, const FailureReading &reading);

    QStringList m_lines;
    qint64 m_lineCount = 0;
    QString m_title;
    bool m_running = false;
    bool m_succeeded = false;
    std::optional<QString> m_failureSummary;
    FailureReading m_failure;
    FailedStep m_failedStep;
    qint64 m_stepStart = 0;
    std::shared_ptr<StreamingCommand> m_current;
    bool m_cancelRequested = false;
    Wording m_wording;
    Reader m_reader;
};

} // namespace corvane
