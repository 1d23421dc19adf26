#include "runtime/pihole_controller.h"

#include "exec/command_runner.h"
#include "exec/plain_text.h"
#include "facts/addresses.h"
#include "facts/container_name.h"
#include "runtime/docker_cli.h"

namespace corvane {

namespace {

constexpr std::chrono::seconds kDigPatience{3};
constexpr std::chrono::seconds kNamePatience{1};
const QString kAddress = QStringLiteral("A");

QString imageOf(const QString &tag) { return QStringLiteral("pihole/pihole:") + tag; }

QStringList composeArguments(const QStringList &command)
{
    const QStringList project{QStringLiteral("compose"), QStringLiteral("-f"), PiholeController::composeFile()};
    return project + command;
}

/// The same container as the compose file describes, for a Docker client without the compose plug-in.
QStringList runArguments(const QString &tag, int webPort)
{
    return {
        QStringLiteral("run"),
        QStringLiteral("-d"),
        QStringLiteral("--name"),
        kContainerName,
        QStringLiteral("--restart"),
        QStringLiteral("unless-stopped"),
        QStringLiteral("-p"),
        kPiholeAddress + QStringLiteral(":53:53/tcp"),
        QStringLiteral("-p"),
        kPiholeAddress + QStringLiteral(":53:53/udp"),
        QStringLiteral("-p"),
        kPiholeAddress + QStringLiteral(":%1:80/tcp").arg(webPort),
        QStringLiteral("-e"),
        QStringLiteral("TZ=") + PiholeController::safeTimeZone(),
        QStringLiteral("-e"),
        QStringLiteral("FTLCONF_dns_upstreams=1.1.1.1"),
        QStringLiteral("-e"),
        QStringLiteral("FTLCONF_dns_listeningMode=ALL"),
        QStringLiteral("-e"),
        QStringLiteral("FTLCONF_misc_etc_dnsmasq_d=true"),
        QStringLiteral("--env-file"),
        PiholeController::environmentFile(),
        QStringLiteral("-v"),
        kSettingsVolume + QStringLiteral(":/etc/pihole"),
        QStringLiteral("-v"),
        kDnsmasqVolume + QStringLiteral(":/etc/dnsmasq.d"),
        imageOf(tag),
    };
}

CommandStep createStep(const QString &docker, const QString &tag, int webPort, bool compose)
{
    if (compose) {
        return {
            .label = QStringLiteral("docker compose up -d"),
            .exe = docker,
            .args = composeArguments({QStringLiteral("up"), QStringLiteral("-d")}),
        };
    }
    return {
        .label = QStringLiteral("docker run -d --name pihole ..."),
        .exe = docker,
        .args = runArguments(tag, webPort),
    };
}

QStringList digArguments(const QString &name, const QString &type, Transport transport, const QString &server,
                         std::chrono::seconds patience)
{
    QStringList args{
        u'@' + server,
        QStringLiteral("-p"),
        QStringLiteral("53"),
        QStringLiteral("+time=%1").arg(patience.count()),
        QStringLiteral("+tries=1"),
        QStringLiteral("+noall"),
        QStringLiteral("+comments"),
        QStringLiteral("+answer"),
    };
    if (transport == Transport::Tcp) args += QStringLiteral("+tcp");
    args += name;
    args += type;
    return args;
}

QCoro::Task<DigResult> runDig(QStringList args)
{
    const Command dig(QStringLiteral("/usr/bin/dig"), args);
    const CommandResult result = co_await CommandRunner::run(dig.within(PiholeController::kQuickTimeout));
    co_return DigResult::parse(result);
}

bool saysMissing(const QString &error)
{
    return error.contains(QLatin1String("no such object"), Qt::CaseInsensitive) ||
           error.contains(QLatin1String("no such container"), Qt::CaseInsensitive);
}

} // namespace

QCoro::Task<ContainerState> PiholeController::containerState()
{
    const EngineAnswer engine = co_await DockerCLI::engine();
    if (!engine.answers) co_return ContainerState::dockerDown();

    const QString format =
        QStringLiteral("{{.State.Status}}|{{if .State.Health}}{{.State.Health.Status}}{{else}}none{{end}}");
    const QStringList inspect{QStringLiteral("inspect"), QStringLiteral("--format"), format, kContainerName};
    const CommandResult container = co_await DockerCLI::run(inspect, kQuickTimeout);
    if (!container.succeeded()) co_return ContainerState::missing();
    co_return ContainerState::parse(container.standardOutput);
}

QCoro::Task<std::optional<DeployedContainer>> PiholeController::deployed()
{
    const QStringList inspect{QStringLiteral("inspect"), QStringLiteral("--format"), DeployedContainer::kFormat,
                              kContainerName};
    const CommandResult container = co_await DockerCLI::run(inspect, kQuickTimeout);
    if (saysMissing(container.standardError)) co_return DeployedContainer();
    if (!container.succeeded()) co_return std::nullopt;
    co_return DeployedContainer::parse(container.standardOutput);
}

QCoro::Task<DigResult> PiholeController::dig(QString name, QString type, Transport transport, QString server)
{
    const QStringList args = digArguments(name, type, transport, server, kDigPatience);
    return runDig(args);
}

QCoro::Task<DigResult> PiholeController::ask(QString name, Transport transport)
{
    return dig(std::move(name), kAddress, transport, kPiholeAddress);
}

QCoro::Task<bool> PiholeController::knowsItsName()
{
    const QStringList args =
        digArguments(QStringLiteral("pi.hole"), kAddress, Transport::Udp, kPiholeAddress, kNamePatience);
    const DigResult reply = co_await runDig(args);
    co_return reply.answered();
}

CommandSteps PiholeController::pullSteps(const QString &tag, bool compose)
{
    const auto docker = DockerCLI::find();
    if (!docker) return {};
    if (compose) {
        return {{
            .label = QStringLiteral("docker compose pull"),
            .exe = *docker,
            .args = composeArguments({QStringLiteral("pull")}),
        }};
    }
    return {{
        .label = QStringLiteral("docker pull ") + imageOf(tag),
        .exe = *docker,
        .args = {QStringLiteral("pull"), imageOf(tag)},
    }};
}

CommandSteps PiholeController::upSteps(const QString &tag, int webPort, bool compose)
{
    const auto docker = DockerCLI::find();
    if (!docker) return {};
    const CommandStep removeOld{
        .label = QStringLiteral("docker rm -f pihole (volumes are kept)"),
        .exe = *docker,
        .args = {QStringLiteral("rm"), QStringLiteral("-f"), kContainerName},
        .allowFailure = true,
    };
    return {removeOld, createStep(*docker, tag, webPort, compose)};
}

QCoro::Task<QString> PiholeController::logs(int tail)
{
    const QStringList args{QStringLiteral("logs"), QStringLiteral("--tail"), QString::number(tail), kContainerName};
    const CommandResult result = co_await DockerCLI::run(args, kLogTimeout, Streams::Together);
    if (result.launchError) co_return DockerCLI::kNotFound;
    const QString text = plainText(result.combined());
    co_return text.isEmpty() ? QStringLiteral("(no log output)") : text;
}

} // namespace corvane
