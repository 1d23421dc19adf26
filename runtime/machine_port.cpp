#include "runtime/machine_port.h"

#include "exec/command_runner.h"
#include "facts/container_name.h"
#include "runtime/colima_manager.h"
#include "runtime/docker_cli.h"

#include <QRegularExpression>

namespace corvane {

namespace {

constexpr std::chrono::seconds kAskTimeout{10};
constexpr std::chrono::seconds kScriptTimeout{30};
constexpr qsizetype kLocalColumn = 4;
const QString kProxy = QStringLiteral("docker-proxy");
const QString kNameService = QStringLiteral("dnsmasq");

/// When the name service does not come back with the file, it comes back without it.
const QString kMakeRoom =
    QStringLiteral("printf '# Leaves 127.0.0.1 to Pi-hole. Written by Corvane.\\nexcept-interface=lo\\n' "
                   "> /etc/dnsmasq.d/02-corvane.conf && systemctl restart dnsmasq || "
                   "{ rm -f /etc/dnsmasq.d/02-corvane.conf; systemctl restart dnsmasq; exit 1; }");
const QString kGiveRoomBack = QStringLiteral("[ ! -e /etc/dnsmasq.d/02-corvane.conf ] || "
                                             "{ rm -f /etc/dnsmasq.d/02-corvane.conf && systemctl restart dnsmasq; }");

QStringList inMachine(const QStringList &command)
{
    return QStringList{QStringLiteral("ssh"), QStringLiteral("--"), QStringLiteral("sudo")} + command;
}

QStringList shellInMachine(const QString &script)
{
    return inMachine({QStringLiteral("sh"), QStringLiteral("-c"), script});
}

/// The address of a socket without its port and its device.
QString localAddress(const QString &column) { return column.section(u':', 0, -2).section(u'%', 0, 0); }

/// The programs that a line of the list names.
QStringList programs(const QString &line)
{
    static const QRegularExpression quoted(QStringLiteral("\\(\"([^\"]*)\",pid="));
    QStringList names;
    for (auto matches = quoted.globalMatch(line); matches.hasNext();)
        names += matches.next().captured(1);
    return names;
}

} // namespace

MachinePort MachinePort::parse(const QString &listing)
{
    MachinePort port;
    for (const QString &line : listing.split(u'\n')) {
        const QStringList columns = line.simplified().split(u' ');
        if (columns.size() <= kLocalColumn) continue;
        const QString address = localAddress(columns[kLocalColumn]);
        const bool everywhere = address == QLatin1String("0.0.0.0") || address == QLatin1String("*");
        if (!everywhere && address != QLatin1String("127.0.0.1")) continue;
        for (const QString &program : programs(line)) {
            if (program == kProxy) {
                port.m_holder = Holder::Container;
            } else if (program == kNameService && !everywhere) {
                if (port.m_holder == Holder::Nobody) port.m_holder = Holder::NameService;
            } else {
                port.m_holder = Holder::Program;
                port.m_name = program;
                return port;
            }
        }
    }
    return port;
}

QCoro::Task<MachinePort> MachinePort::ask()
{
    const auto colima = ColimaManager::find();
    if (!colima) co_return MachinePort();
    const QStringList list{QStringLiteral("ss"), QStringLiteral("-H"), QStringLiteral("-lntup"),
                           QStringLiteral("sport = :53")};
    const Command question(*colima, inMachine(list));
    const CommandResult answer = co_await CommandRunner::run(question.within(kAskTimeout));
    if (!answer.succeeded()) co_return MachinePort();
    const MachinePort port = parse(answer.standardOutput);
    if (port.holder() != Holder::Container) co_return port;
    co_return co_await amongContainers();
}

/// Which container it is: Pi-hole's own is not in the way, because it is about to be replaced.
QCoro::Task<MachinePort> MachinePort::amongContainers()
{
    const QStringList question{
        QStringLiteral("ps"),        QStringLiteral("--filter"),       QStringLiteral("publish=53/tcp"),
        QStringLiteral("--filter"),  QStringLiteral("publish=53/udp"), QStringLiteral("--format"),
        QStringLiteral("{{.Names}}")};
    const CommandResult answer = co_await DockerCLI::run(question, kAskTimeout);
    QStringList names = answer.standardOutput.split(u'\n', Qt::SkipEmptyParts);
    names.removeAll(kContainerName);
    MachinePort port;
    if (!answer.succeeded() || names.isEmpty()) co_return port;
    port.m_holder = Holder::Container;
    port.m_name = names.first().trimmed();
    co_return port;
}

CommandSteps MachinePort::roomSteps()
{
    const auto colima = ColimaManager::find();
    if (!colima) return {};
    return {{
        .label = kMakingRoom,
        .exe = *colima,
        .args = shellInMachine(kMakeRoom),
    }};
}

QCoro::Task<> MachinePort::makeRoom() { return runInMachine(kMakeRoom); }

QCoro::Task<> MachinePort::giveRoomBack() { return runInMachine(kGiveRoomBack); }

QCoro::Task<> MachinePort::runInMachine(QString script)
{
    const auto colima = ColimaManager::find();
    if (!colima) co_return;
    const Command command(*colima, shellInMachine(script));
    co_await CommandRunner::run(command.within(kScriptTimeout));
}

QString MachinePort::problem() const
{
    switch (m_holder) {
    case Holder::Container:
        return QStringLiteral("Port 53 is taken inside Colima's virtual machine, by the container '%1'. Stop that "
                              "container, then try again.")
            .arg(m_name);
    case Holder::Program:
        return QStringLiteral("Port 53 is taken inside Colima's virtual machine, by the program '%1'. Stop it there, "
                              "then try again.")
            .arg(m_name);
    case Holder::Nobody:
    case Holder::NameService:
        break;
    }
    return {};
}

} // namespace corvane
