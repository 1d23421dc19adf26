#include "remote/caller.h"

#include "exec/file_descriptor.h"
#include "platform/peer.h"
#include "remote/instance.h"
#include "remote/local_address.h"

#include <QDeadlineTimer>

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

namespace corvane::remote {

namespace {

constexpr useconds_t kBetweenAttempts = 20'000; // microseconds

/// Waits until something can be done with the socket, or the time is over.
bool waitsFor(int socket, short events, const QDeadlineTimer &deadline)
{
    for (;;) {
        pollfd entry{socket, events, 0};
        const int ready = ::poll(&entry, 1, static_cast<int>(deadline.remainingTime()));
        if (ready > 0) return true;
        if (ready == 0 || errno != EINTR) return false;
    }
}

/// A connection to the Corvane of this user; closed when there is none.
FileDescriptor connected()
{
    const auto address = LocalAddress::ofCorvane();
    FileDescriptor socket(address ? ::socket(AF_UNIX, SOCK_STREAM, 0) : -1);
    if (!socket.isOpen()) return {};
    ::fcntl(socket.number(), F_SETFD, FD_CLOEXEC);
    // One whose queue is full must hold nobody up.
    ::fcntl(socket.number(), F_SETFL, O_NONBLOCK);
    const bool there = ::connect(socket.number(), address->pointer(), address->size()) == 0 &&
                       platform::peerUser(socket.number()) == ::geteuid();
    return there ? std::move(socket) : FileDescriptor();
}

/// Keeps trying while another Corvane runs: it may be about to listen.
std::expected<FileDescriptor, Silence> connectedInTime(const QDeadlineTimer &deadline)
{
    for (;;) {
        FileDescriptor socket = connected();
        if (socket.isOpen()) return socket;
        if (!Instance::running()) return std::unexpected(Silence::NotRunning);
        if (deadline.hasExpired()) return std::unexpected(Silence::NoAnswer);
        ::usleep(kBetweenAttempts);
    }
}

/// The answers on a connection, line by line.
class Answers {
public:
    explicit Answers(int socket)
        : m_socket(socket)
    {}

    std::optional<Answer> next(const QDeadlineTimer &deadline)
    {
        qsizetype end = m_read.indexOf('\n');
        while (end < 0) {
            if (m_read.size() > kLongestAnswer || !readMore(deadline)) return std::nullopt;
            end = m_read.indexOf('\n');
        }
        const QByteArray line = m_read.first(end);
        m_read.remove(0, end + 1);
        return decodeAnswer(line);
    }

private:
    bool readMore(const QDeadlineTimer &deadline)
    {
        char buffer[4096];
        if (!waitsFor(m_socket, POLLIN, deadline)) return false;
        const ssize_t count = ::read(m_socket, buffer, sizeof buffer);
        if (count > 0) m_read.append(buffer, count);
        return count > 0;
    }

    int m_socket;
    QByteArray m_read;
};

/// A request is shorter than what any socket takes at once.
bool sends(int socket, const QByteArray &line)
{
    // A Corvane that has just gone must not end this program as well.
    std::signal(SIGPIPE, SIG_IGN);
    return ::write(socket, line.constData(), static_cast<std::size_t>(line.size())) == line.size();
}

} // namespace

std::expected<Answer, Silence> ask(const Request &request, Patience patience,
                                   const std::function<void(const QString &)> &begun)
{
    QDeadlineTimer deadline(patience.hearing);
    const auto socket = connectedInTime(deadline);
    if (!socket) return std::unexpected(socket.error());
    if (!sends(socket->number(), encode(request))) return std::unexpected(Silence::NoAnswer);

    Answers answers(socket->number());
    while (const auto answer = answers.next(deadline)) {
        if (answer->status) return *answer;
        begun(answer->text);
        deadline.setRemainingTime(patience.working);
    }
    return std::unexpected(Silence::NoAnswer);
}

} // namespace corvane::remote
