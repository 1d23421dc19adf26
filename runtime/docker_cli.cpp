#include "runtime/docker_cli.h"

#include "exec/command_runner.h"
#include "exec/tools.h"

#include <QRegularExpression>

namespace corvane {

namespace {

constexpr QLatin1StringView kNotRunning{"Docker is not running. Start Colima first (step 3)."};
constexpr QLatin1StringView kDiskFull{"The Colima disk is full. Free some space (for example 'docker system prune') or "
                                      "recreate Colima with a bigger disk."};
constexpr QLatin1StringView kNoInternet{"Docker could not reach the internet to download Pi-hole. Check your "
                                        "connection (and any VPN) and try again."};
constexpr QLatin1StringView kRefused{"Docker refused access (permission denied). Check that your user can use Colima's "
                                     "Docker socket."};
constexpr QLatin1StringView kNoSuchVersion{"That Pi-hole version does not exist on Docker Hub."};
constexpr QLatin1StringView kOther{"Docker reported an error. Open 'Show details' to read it."};

constexpr QLatin1StringView kClientTooOld{"Docker's client is too old for the engine in Colima. Run 'brew upgrade "
                                          "docker' in Terminal, then try again."};
constexpr QLatin1StringView kClientTooNew{"Docker's client is too new for the engine in Colima. Run 'brew upgrade "
                                          "colima' in Terminal, then restart Colima."};
constexpr std::chrono::seconds kInfoTimeout{10};

/// What the engine says about a client of another age.
QString versionProblem(const QString &text)
{
    static const QRegularExpression pattern(QStringLiteral("client version \\S+ is too (old|new)"));
    const QString age = pattern.match(text).captured(1);
    if (age.isEmpty()) return {};
    return age == QLatin1String("old") ? kClientTooOld : kClientTooNew;
}

struct Wording {
    QLatin1StringView found;
    QLatin1StringView sentence;
};

/// The first that is found decides: a stopped engine may also complain about permissions, and a pull without a network
/// may end in a missing manifest.
constexpr Wording kWordings[] = {
    {QLatin1StringView("cannot connect to the docker daemon"), kNotRunning},
    {QLatin1StringView("is the docker daemon running"), kNotRunning},
    {QLatin1StringView("failed to connect to the docker api"), kNotRunning}, // since Docker 29
    {QLatin1StringView("no space left on device"), kDiskFull},
    {QLatin1StringView("address already in use"), DockerCLI::kPortInUse},
    {QLatin1StringView("port is already allocated"), DockerCLI::kPortInUse},
    {QLatin1StringView("ports are not available"), DockerCLI::kPortInUse},
    {QLatin1StringView("no such host"), kNoInternet},
    {QLatin1StringView("tls handshake timeout"), kNoInternet},
    {QLatin1StringView("i/o timeout"), kNoInternet},
    {QLatin1StringView("network is unreachable"), kNoInternet},
    {QLatin1StringView("temporary failure in name resolution"), kNoInternet},
    {QLatin1StringView("dial tcp"), kNoInternet},
    {QLatin1StringView("failed to resolve"), kNoInternet},
    {QLatin1StringView("permission denied"), kRefused},
    {QLatin1StringView("manifest unknown"), kNoSuchVersion},
    {QLatin1StringView("not found: manifest"), kNoSuchVersion},
};

} // namespace

const QStringList &DockerCLI::searchDirs()
{
    static const QStringList &dirs = *new QStringList{
        QStringLiteral("/opt/homebrew/bin"),
        QStringLiteral("/usr/local/bin"),
        QStringLiteral("/Applications/Docker.app/Contents/Resources/bin"),
    };
    return dirs;
}

std::optional<QString> DockerCLI::find() { return Tools::find(QStringLiteral("docker"), searchDirs()); }

QCoro::Task<CommandResult> DockerCLI::run(QStringList args, std::chrono::milliseconds limit, Streams streams)
{
    const std::optional<QString> docker = find();
    if (!docker) {
        CommandResult missing;
        missing.launchError = QStringLiteral("docker was not found");
        co_return missing;
    }
    const TimedCommand command = Command(*docker, args).with(streams).within(limit);
    co_return co_await CommandRunner::run(command);
}

QCoro::Task<EngineAnswer> DockerCLI::engine()
{
    const QStringList info{QStringLiteral("info"), QStringLiteral("--format"), QStringLiteral("{{.ServerVersion}}")};
    const CommandResult result = co_await run(info, kInfoTimeout);
    EngineAnswer answer;
    answer.answers = result.succeeded() && !result.standardOutput.trimmed().isEmpty();
    if (!answer.answers) answer.problem = versionProblem(result.combined());
    co_return answer;
}

QString DockerCLI::friendlyError(const QString &text)
{
    if (const QString problem = versionProblem(text); !problem.isEmpty()) return problem;
    const QString lowered = text.toLower();
    for (const Wording &wording : kWordings) {
        if (lowered.contains(wording.found)) return wording.sentence;
    }
    return kOther;
}

} // namespace corvane
