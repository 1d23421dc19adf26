#pragma once

#include "exec/command.h"
#include "exec/file_descriptor.h"

#include <sys/types.h>

#include <chrono>
#include <expected>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>

namespace corvane {

/// One started program whose two output streams this process reads; its standard input is the null device.
///
/// One thread starts it, reads it and sees it end; terminate may come from any thread.
class ChildProcess {
public:
    using Clock = std::chrono::steady_clock;
    /// Reads some bytes as read(2) does: answers their number, 0 at the end, or -1 with errno.
    using ReadSome = std::function<ssize_t(int descriptor)>;

    /// How often all children were asked to end.
    using Era = quint64;
    [[nodiscard]] static Era era();

    /// The started program, or why it could not be started, in the system's words. One that was asked for in an earlier
    /// era is asked to end at once.
    [[nodiscard]] static std::expected<std::shared_ptr<ChildProcess>, QString> start(const Command &command, Era asked);

    /// A child that still runs is left to itself.
    ~ChildProcess();

    /// Reads both streams until the child has ended, then what they hold at that moment and no more: a grandchild may
    /// keep them open. False when the limit came first.
    [[nodiscard]] bool readUntilEnd(const ReadSome &output, const ReadSome &error, Clock::time_point limit);

    /// The exit status, or the number of the signal that ended it; absent while it runs.
    [[nodiscard]] std::optional<int> status() const;

    /// Sends SIGTERM, unless it has ended.
    void terminate();

    /// Sends SIGTERM to every child that a thread of this process still waits for, and begins a new era.
    static void terminateAll();

private:
    ChildProcess(pid_t pid, FileDescriptor exitWatch, FileDescriptor output, FileDescriptor error, Era asked);
    void collect();

    mutable std::mutex m_mutex;
    pid_t m_pid;
    std::optional<int> m_status;
    FileDescriptor m_exitWatch;
    FileDescriptor m_output;
    FileDescriptor m_error;
};

} // namespace corvane
