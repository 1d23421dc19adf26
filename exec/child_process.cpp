#include "exec/child_process.h"

#include "exec/spawn.h"
#include "platform/process.h"

#include <poll.h>
#include <signal.h>
#include <sys/ioctl.h>
#include <sys/wait.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <system_error>
#include <unordered_set>
#include <vector>

namespace corvane {

namespace {

/// Every child that somebody waits for, and those that nobody waits for any more but that have not ended.
class Registry {
public:
    void add(ChildProcess *child, ChildProcess::Era asked)
    {
        const std::lock_guard guard(m_mutex);
        m_awaited.insert(child);
        if (asked != m_era) child->terminate();
    }

    [[nodiscard]] ChildProcess::Era era()
    {
        const std::lock_guard guard(m_mutex);
        return m_era;
    }

    void remove(ChildProcess *child)
    {
        const std::lock_guard guard(m_mutex);
        m_awaited.erase(child);
    }

    void adopt(pid_t survivor)
    {
        const std::lock_guard guard(m_mutex);
        m_survivors.push_back(survivor);
    }

    /// Collects the survivors that have ended since, so that none stays a zombie for good.
    void sweep()
    {
        const std::lock_guard guard(m_mutex);
        std::erase_if(m_survivors, [](pid_t pid) { return waitpid(pid, nullptr, WNOHANG) != 0; });
    }

    void terminateAwaited()
    {
        const std::lock_guard guard(m_mutex);
        ++m_era;
        for (ChildProcess *child : m_awaited)
            child->terminate();
    }

private:
    std::mutex m_mutex;
    ChildProcess::Era m_era = 0;
    std::unordered_set<ChildProcess *> m_awaited;
    std::vector<pid_t> m_survivors;
};

// Never destroyed: a worker thread may outlive main().
Registry &registry()
{
    static Registry &instance = *new Registry;
    return instance;
}

QString systemWords(int error) { return QString::fromStdString(std::generic_category().message(error)); }

/// The longest sleep of poll() until the limit; it may be shorter than the limit is away.
int pollTime(ChildProcess::Clock::time_point limit)
{
    if (limit == ChildProcess::Clock::time_point::max()) return -1;
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(limit - ChildProcess::Clock::now()).count();
    return static_cast<int>(std::clamp<long long>(left, 0, 3'600'000));
}

int exitStatus(int waitStatus) { return WIFSIGNALED(waitStatus) ? WTERMSIG(waitStatus) : WEXITSTATUS(waitStatus); }

bool isTemporary(int error) { return error == EAGAIN || error == EINTR; }

void readOnce(FileDescriptor &stream, const ChildProcess::ReadSome &readSome)
{
    const ssize_t count = readSome(stream.number());
    if (count == 0 || (count < 0 && !isTemporary(errno))) stream.close();
}

void readWhatIsThere(FileDescriptor &stream, const ChildProcess::ReadSome &readSome)
{
    int waiting = 0;
    if (!stream.isOpen() || ioctl(stream.number(), FIONREAD, &waiting) != 0) return;
    while (waiting > 0) {
        const ssize_t count = readSome(stream.number());
        if (count <= 0) return;
        waiting -= static_cast<int>(count);
    }
}

// With SIGCHLD ignored, as a careless parent may have left it, the system would throw exit statuses away.
void keepExitStatuses()
{
    struct sigaction current = {};
    sigaction(SIGCHLD, nullptr, &current);
    if (current.sa_handler == SIG_IGN) signal(SIGCHLD, SIG_DFL);
}

} // namespace

std::expected<std::shared_ptr<ChildProcess>, QString> ChildProcess::start(const Command &command, Era asked)
{
    static std::once_flag once;
    std::call_once(once, keepExitStatuses);
    registry().sweep();

    auto spawned = spawnProgram(command);
    if (!spawned) return std::unexpected(systemWords(spawned.error()));
    FileDescriptor exitWatch(platform::watchExit(spawned->pid));
    const int watchError = errno;
    const bool watched = exitWatch.isOpen();
    std::shared_ptr<ChildProcess> child(new ChildProcess(spawned->pid, std::move(exitWatch), std::move(spawned->output),
                                                         std::move(spawned->error), asked));
    if (watched) return child;
    child->terminate();
    return std::unexpected(systemWords(watchError));
}

ChildProcess::ChildProcess(pid_t pid, FileDescriptor exitWatch, FileDescriptor output, FileDescriptor error, Era asked)
    : m_pid(pid)
    , m_exitWatch(std::move(exitWatch))
    , m_output(std::move(output))
    , m_error(std::move(error))
{
    registry().add(this, asked);
}

ChildProcess::~ChildProcess()
{
    registry().remove(this);
    if (!m_status) registry().adopt(m_pid);
}

bool ChildProcess::readUntilEnd(const ReadSome &output, const ReadSome &error, Clock::time_point limit)
{
    for (;;) {
        std::array<pollfd, 3> waiting{
            {{m_exitWatch.number(), POLLIN, 0}, {m_output.number(), POLLIN, 0}, {m_error.number(), POLLIN, 0}}};
        if (poll(waiting.data(), waiting.size(), pollTime(limit)) < 0) waiting = {};
        if (waiting[0].revents != 0) {
            collect();
            readWhatIsThere(m_output, output);
            readWhatIsThere(m_error, error);
            return true;
        }
        if (waiting[1].revents != 0) readOnce(m_output, output);
        if (waiting[2].revents != 0) readOnce(m_error, error);
        if (Clock::now() >= limit) return false;
    }
}

// The lock keeps terminate from signalling a process number that the system has already given to somebody else.
void ChildProcess::collect()
{
    const std::lock_guard guard(m_mutex);
    int waitStatus = 0;
    pid_t collected = 0;
    do {
        collected = waitpid(m_pid, &waitStatus, 0);
    } while (collected < 0 && errno == EINTR);
    m_status = collected == m_pid ? exitStatus(waitStatus) : -1;
}

std::optional<int> ChildProcess::status() const
{
    const std::lock_guard guard(m_mutex);
    return m_status;
}

void ChildProcess::terminate()
{
    const std::lock_guard guard(m_mutex);
    if (!m_status) kill(m_pid, SIGTERM);
}

ChildProcess::Era ChildProcess::era() { return registry().era(); }

void ChildProcess::terminateAll() { registry().terminateAwaited(); }

} // namespace corvane
