#include "exec/streaming_command.h"

#include "exec/background.h"
#include "exec/child_process.h"
#include "exec/line_splitter.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QTimer>

#include <array>
#include <mutex>

namespace corvane {

namespace {

constexpr qint64 kHandOverInterval = 16;

/// The lines of which the main thread has not been told yet; only the newest are kept, so a child that prints faster
/// than the main thread shows costs no memory.
class PendingLines {
public:
    void add(QStringList lines)
    {
        m_batch.lines += std::move(lines);
        if (m_batch.lines.size() > 2 * LineBatch::kMostLines) trim();
    }

    [[nodiscard]] bool isEmpty() const { return m_batch.lines.isEmpty(); }

    [[nodiscard]] LineBatch take()
    {
        trim();
        return std::exchange(m_batch, LineBatch());
    }

private:
    void trim()
    {
        const qsizetype surplus = m_batch.lines.size() - LineBatch::kMostLines;
        if (surplus <= 0) return;
        m_batch.lines.remove(0, surplus);
        m_batch.dropped += surplus;
    }

    LineBatch m_batch;
};

} // namespace

/// What the reading thread and the main thread have in common.
struct StreamingCommand::Shared : std::enable_shared_from_this<Shared> {
    std::mutex mutex;
    std::shared_ptr<ChildProcess> process;
    bool cancelled = false;
    PendingLines pending;
    bool handOverUnderWay = false;

    // The main thread's own.
    std::function<void(LineBatch)> onLines;
    QElapsedTimer sinceHandOver;

    std::optional<int> read(const QString &exe, const QStringList &args, const Environment &env);
    void hold(std::shared_ptr<ChildProcess> child);
    void add(QStringList lines);
    void handOverWhenDue();
    void handOver();
    void cancel();
};

std::optional<int> StreamingCommand::Shared::read(const QString &exe, const QStringList &args, const Environment &env)
{
    const auto started = ChildProcess::start(exe, args, env);
    if (!started) {
        const QString name = QFileInfo(exe).fileName();
        add({QStringLiteral("Could not start %1: %2").arg(name, started.error())});
        return std::nullopt;
    }
    hold(*started);

    QStringList lines;
    const auto keepLine = [&lines](QString line) { lines.append(std::move(line)); };
    LineSplitter output(keepLine);
    LineSplitter error(keepLine);
    std::array<char, 64 * 1024> buffer;
    const auto readerFor = [&](LineSplitter &splitter) {
        return [&](int descriptor) {
            const ssize_t count = ::read(descriptor, buffer.data(), buffer.size());
            if (count > 0) splitter.feed(QByteArrayView(buffer.data(), count));
            add(std::exchange(lines, QStringList()));
            return count;
        };
    };
    (void)(*started)->readUntilEnd(readerFor(output), readerFor(error), ChildProcess::Clock::time_point::max());
    output.flush();
    error.flush();
    add(std::move(lines));
    hold(nullptr);
    return (*started)->status();
}

void StreamingCommand::Shared::hold(std::shared_ptr<ChildProcess> child)
{
    const std::lock_guard guard(mutex);
    process = std::move(child);
    if (process && cancelled) process->terminate();
}

void StreamingCommand::Shared::add(QStringList lines)
{
    if (lines.isEmpty()) return;
    const std::lock_guard guard(mutex);
    pending.add(std::move(lines));
    if (std::exchange(handOverUnderWay, true)) return;
    postToMainThread([self = shared_from_this()] { self->handOverWhenDue(); });
}

void StreamingCommand::Shared::handOverWhenDue()
{
    const qint64 wait = sinceHandOver.isValid() ? kHandOverInterval - sinceHandOver.elapsed() : 0;
    if (wait <= 0) return handOver();
    QTimer::singleShot(static_cast<int>(wait), Qt::PreciseTimer, qApp,
                       [self = shared_from_this()] { self->handOver(); });
}

void StreamingCommand::Shared::handOver()
{
    LineBatch batch;
    {
        const std::lock_guard guard(mutex);
        handOverUnderWay = false;
        batch = pending.take();
    }
    if (batch.lines.isEmpty() || !onLines) return;
    sinceHandOver.start();
    onLines(std::move(batch));
}

void StreamingCommand::Shared::cancel()
{
    const std::lock_guard guard(mutex);
    cancelled = true;
    if (process) process->terminate();
}

StreamingCommand::StreamingCommand()
    : m_shared(std::make_shared<Shared>())
{}

StreamingCommand::~StreamingCommand() = default;

QCoro::Task<std::optional<int>> StreamingCommand::run(QString exe, QStringList args, Environment env,
                                                      std::function<void(LineBatch)> onLines)
{
    const std::shared_ptr<Shared> shared = m_shared; // This object may be gone when the child ends.
    shared->onLines = std::move(onLines);
    std::function<std::optional<int>()> reading = [shared, exe, args, env] { return shared->read(exe, args, env); };
    BackgroundWork<std::optional<int>> work(std::move(reading));
    const std::optional<int> status = co_await work;
    shared->handOver();
    shared->onLines = nullptr;
    co_return status;
}

void StreamingCommand::cancel() { m_shared->cancel(); }

} // namespace corvane
