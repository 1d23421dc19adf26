// The program that is at the path of every tool of the simulated Mac. It tells the daemon who it was called as
// and with what, copies what the daemon answers to its own streams, and ends as the daemon says.

#include <sys/auxv.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>
#include <string_view>

namespace {

constexpr const char *kSocketPath = "/run/simmac/tools.sock";
constexpr int kNoDaemon = 126;

[[noreturn]] void giveUp(const char *what)
{
    std::fprintf(stderr, "The simulated Mac does not answer (%s: %s).\n", what, std::strerror(errno));
    _exit(kNoDaemon);
}

/// The connection to the daemon.
class Daemon {
public:
    void open()
    {
        // The connection stays open when this process becomes the real tool: its end tells the daemon of the tool's
        // end.
        m_socket = socket(AF_UNIX, SOCK_STREAM, 0);
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        std::strncpy(address.sun_path, kSocketPath, sizeof address.sun_path - 1);
        if (m_socket < 0 || connect(m_socket, reinterpret_cast<sockaddr *>(&address), sizeof address) != 0)
            giveUp("connect");
    }

    void send(std::string_view bytes) const
    {
        while (!bytes.empty()) {
            const ssize_t sent = ::send(m_socket, bytes.data(), bytes.size(), MSG_NOSIGNAL);
            if (sent < 0 && errno != EINTR) giveUp("send");
            bytes.remove_prefix(sent > 0 ? static_cast<std::size_t>(sent) : 0);
        }
    }

    void receive(void *into, std::size_t size) const
    {
        auto *place = static_cast<char *>(into);
        while (size > 0) {
            const ssize_t got = recv(m_socket, place, size, 0);
            if (got < 0 && errno == EINTR) continue;
            if (got <= 0) giveUp("receive");
            place += got;
            size -= static_cast<std::size_t>(got);
        }
    }

    template <typename Number>
    [[nodiscard]] Number receiveNumber() const
    {
        Number number{};
        receive(&number, sizeof number);
        return number;
    }

private:
    int m_socket = -1;
};

void append(std::string &texts, const char *text)
{
    texts.append(text);
    texts.push_back('\0');
}

/// What the daemon is told: length and number of arguments, then name, folder, arguments and environment.
std::string request(int argc, char **argv)
{
    std::string texts;
    const auto *called = reinterpret_cast<const char *>(getauxval(AT_EXECFN));
    append(texts, called != nullptr ? called : argv[0]);
    char *folder = getcwd(nullptr, 0);
    append(texts, folder != nullptr ? folder : "/");
    for (int i = 1; i < argc; ++i)
        append(texts, argv[i]);
    for (char **variable = environ; *variable != nullptr; ++variable)
        append(texts, *variable);

    const std::uint32_t numbers[] = {static_cast<std::uint32_t>(texts.size()),
                                     static_cast<std::uint32_t>(argc > 0 ? argc - 1 : 0)};
    return std::string(reinterpret_cast<const char *>(numbers), sizeof numbers) + texts;
}

/// A reader that went away ends a tool by SIGPIPE, as it does for any other program.
void copy(const Daemon &daemon, int stream)
{
    static char buffer[65536];
    auto left = daemon.receiveNumber<std::uint32_t>();
    while (left > 0) {
        const std::size_t part = left < sizeof buffer ? left : sizeof buffer;
        daemon.receive(buffer, part);
        for (std::size_t written = 0; written < part;) {
            const ssize_t count = write(stream, buffer + written, part - written);
            if (count < 0 && errno != EINTR) _exit(1);
            written += count > 0 ? static_cast<std::size_t>(count) : 0;
        }
        left -= static_cast<std::uint32_t>(part);
    }
}

[[noreturn]] void dieBy(int number)
{
    std::signal(number, SIG_DFL);
    raise(number);
    _exit(128 + number);
}

[[noreturn]] void becomeRealTool(const Daemon &daemon, char **argv)
{
    std::string path(daemon.receiveNumber<std::uint32_t>(), '\0');
    daemon.receive(path.data(), path.size());
    execv(path.c_str(), argv);
    giveUp(path.c_str());
}

} // namespace

int main(int argc, char **argv)
{
    Daemon daemon;
    daemon.open();
    daemon.send(request(argc, argv));
    for (;;) {
        switch (daemon.receiveNumber<char>()) {
        case 'o':
            copy(daemon, STDOUT_FILENO);
            break;
        case 'e':
            copy(daemon, STDERR_FILENO);
            break;
        case 'i':
            std::signal(SIGTERM, SIG_IGN);
            break;
        case 's':
            _exit(daemon.receiveNumber<std::int32_t>());
        case 'k':
            dieBy(daemon.receiveNumber<std::int32_t>());
        case 'x':
            becomeRealTool(daemon, argv);
        default:
            errno = EPROTO;
            giveUp("answer");
        }
    }
}
