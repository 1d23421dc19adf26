#include "exec/streaming_command.h"

#include "exec/background.h"
#include "exec/child_process.h"
#include "exec/line_splitter.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QTimer>

#include <algorithm>
#include <array>
#include <deque>
#include <mutex>

namespace corvane {

namespace {

using Chunks = std::deque<QStringList>;

/// The lines that the main thread has not been given yet; only the newest are kept, so a child that prints faster
/// than the main thread shows costs no memory.
class PendingLines {
public:
    /// Returns what is not needed any more: freeing lines takes too long while a lock is held.
    [[nodiscard]] Chunks add(QStringList lines)
    {
        m_size += lines.size();
        m_chunks.push_back(std::move(lines));
        Chunks surplus;
        while (m_size - m_chunks.front().size() >= LineBatch::kMostLines) {
            m_size -= m_chunks.front().size();
            m_dropped += m_chunks.front().size();
            surplus.push_back(std::move(m_chunks.front()));
            m_chunks.pop_front();
        }
        return surplus;
    }

    /// All of them as one batch.
    [[nodiscard]] LineBatch joined() &&
    {
        LineBatch batch;
        batch.lines.reserve(m_size);
        for (QStringList &chunk : m_chunks)
            batch.lines += std::move(chunk);
        const qsizetype surplus = std::max<qsizetype>(0, m_size - LineBatch::kMostLines);
        batch.lines.remove(0, surplus);
        batch.dropped = m_dropped + surplus;
        return batch;
    }

private:
    Chunks m_chunks;
    qsizetype m_size = 0;
    qint64 m_dropped = 0;
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

    std::optional<int> read(const Command &command);
    void hold(std::shared_ptr<ChildProcess> child);
    void add(QStringList lines);
    void handOverWhenDue();
    void handOver();
    void cancel();
};

std::optional<int> StreamingCommand::Shared::read(const Command &command)
{
    const auto started = ChildProcess::start(command, ChildProcess::era());
    if (!started) {
        const QString name = QFileInfo(command.exe()).fileName();
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
    Chunks surplus;
    bool told = false;
    {
        const std::lock_guard guard(mutex);
        surplus = pending.add(std::move(lines));
        told = std::exchange(handOverUnderWay, true);
    }
    if (!told) postToMainThread([self = shared_from_this()] { self->handOverWhenDue(); });
}

void StreamingCommand::Shared::handOverWhenDue()
{
    const qint64 wait = sinceHandOver.isValid() ? kHandOverInterval.count() - sinceHandOver.elapsed() : 0;
    if (wait <= 0) return handOver();
    QTimer::singleShot(static_cast<int>(wait), Qt::PreciseTimer, qApp,
                       [self = shared_from_this()] { self->handOver(); });
}

void StreamingCommand::Shared::handOver()
{
    PendingLines taken;
    {
        const std::lock_guard guard(mutex);
        handOverUnderWay = false;
        std::swap(taken, pending);
    }
    LineBatch batch = std::move(taken).joined();
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

QCoro::Task<std::optional<int>> StreamingCommand::run(Command command, std::function<void(LineBatch)> onLines)
{
    const std::shared_ptr<Shared> shared = m_shared; // This object may be gone when the child ends.
    shared->onLines = std::move(onLines);
    std::function<std::optional<int>()> reading = [shared, command] { return shared->read(command); };
    BackgroundWork<std::optional<int>> work(std::move(reading));
    const std::optional<int> status = co_await work;
    shared->handOver();
    shared->onLines = nullptr;
    co_return status;
}

void StreamingCommand::cancel() { m_shared->cancel(); }

} // namespace corvane
