#include "checks/port_checker.h"

#include "exec/command_runner.h"
#include "facts/addresses.h"
#include "facts/web_ports.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <limits>

namespace corvane {

namespace {

constexpr int kDnsPort = 53;
constexpr QLatin1StringView kNobodySeen{
    "No process is visible to this app (it may belong to the system or another user)."};

class Socket {
public:
    explicit Socket(int type)
        : m_descriptor(::socket(AF_INET, type, 0))
    {
        if (isOpen()) ::fcntl(m_descriptor, F_SETFD, FD_CLOEXEC);
    }
    ~Socket()
    {
        if (isOpen()) ::close(m_descriptor);
    }
    Socket(const Socket &) = delete;
    Socket &operator=(const Socket &) = delete;

    [[nodiscard]] bool isOpen() const { return m_descriptor >= 0; }

    /// 0 or the error number.
    [[nodiscard]] int bind(const sockaddr_in &address) const
    {
        const auto *generic = reinterpret_cast<const sockaddr *>(&address);
        return ::bind(m_descriptor, generic, sizeof address) == 0 ? 0 : errno;
    }

private:
    int m_descriptor;
};

/// Only some systems keep the length inside the address.
template <class Address>
void setLength(Address &address)
{
    if constexpr (requires { address.sin_len; }) address.sin_len = sizeof address;
}

sockaddr_in localAddress(quint16 port)
{
    sockaddr_in address = {};
    setLength(address);
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = inet_addr(kPiholeAddress.data());
    return address;
}

quint16 clamped(int port)
{
    return static_cast<quint16>(std::clamp<int>(port, 0, std::numeric_limits<quint16>::max()));
}

PortReport report(const QString &id, int port, Transport transport)
{
    const bool udp = transport == Transport::Udp;
    const QString protocol = udp ? QStringLiteral("UDP") : QStringLiteral("TCP");
    return {
        .id = id,
        .label = QStringLiteral("%1 %2 on 127.0.0.1").arg(protocol).arg(port),
        .port = port,
        .udp = udp,
        .probe = PortChecker::probe(clamped(port), transport),
        .holder = {},
    };
}

QStringList lsofArguments(int port, Transport transport)
{
    const QString number = QString::number(port);
    if (transport == Transport::Udp) return {QStringLiteral("-nP"), QStringLiteral("-iUDP:") + number};
    return {QStringLiteral("-nP"), QStringLiteral("-iTCP:") + number, QStringLiteral("-sTCP:LISTEN")};
}

/// Whether all who are seen belong to Colima: it carries a port of its virtual machine, where Pi-hole will listen.
bool isForwarderAlone(const QString &seen)
{
    const QStringList rows = seen.split(u'\n').sliced(1); // below the heading
    return !rows.isEmpty() &&
           std::ranges::all_of(rows, [](const QString &row) { return row.startsWith(QLatin1String("limactl ")); });
}

} // namespace

PortProbe PortChecker::probe(quint16 port, Transport transport)
{
    // No address reuse: a port that a listener holds must show as in use.
    const Socket socket(transport == Transport::Udp ? SOCK_DGRAM : SOCK_STREAM);
    if (!socket.isOpen()) return PortProbe::Failed;
    switch (socket.bind(localAddress(port))) {
    case 0:
        return PortProbe::Free;
    case EADDRINUSE:
        return PortProbe::InUse;
    case EPERM:
    case EACCES:
        return PortProbe::Denied;
    default:
        return PortProbe::Failed;
    }
}

QCoro::Task<QString> PortChecker::holder(int port, Transport transport)
{
    const Command lsof(QStringLiteral("/usr/sbin/lsof"), lsofArguments(port, transport));
    // Its status says nothing: it is 1 for a free port and for one that this user may not see into.
    const CommandResult result = co_await CommandRunner::run(lsof.within(kHolderTimeout));
    const QString seen = result.standardOutput.trimmed();
    co_return seen.isEmpty() ? QString(kNobodySeen) : seen;
}

QCoro::Task<QList<PortReport>> PortChecker::checkAll(int webPort)
{
    QList<PortReport> reports{
        report(QStringLiteral("53u"), kDnsPort, Transport::Udp),
        report(QStringLiteral("53t"), kDnsPort, Transport::Tcp),
        report(QStringLiteral("web"), webPort, Transport::Tcp),
    };
    for (PortReport &one : reports) {
        const bool denied = one.probe == PortProbe::Denied;
        if (one.probe != PortProbe::InUse && !denied) continue;
        const Transport transport = one.udp ? Transport::Udp : Transport::Tcp;
        one.holder = co_await holder(one.port, transport);
        // A port that may not be tested is mostly free; only somebody who is seen there is worth a word.
        if (denied && (one.holder == kNobodySeen || isForwarderAlone(one.holder))) one.holder.clear();
    }
    co_return reports;
}

QList<int> PortChecker::freeWebPorts(int excluding)
{
    QList<int> ports;
    for (int port = WebPorts::kFirstOther; port <= WebPorts::kLast; ++port) {
        if (port != excluding && probe(static_cast<quint16>(port), Transport::Tcp) == PortProbe::Free) ports += port;
    }
    return ports;
}

} // namespace corvane
