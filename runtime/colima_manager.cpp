#include "runtime/colima_manager.h"

#include "exec/command_runner.h"
#include "exec/tools.h"

#include <QFileInfo>

namespace corvane {

namespace {

constexpr std::chrono::seconds kHelpTimeout{10};

CommandStep stopColima(const QString &colima, const QString &label)
{
    return {.label = label, .exe = colima, .args = {QStringLiteral("stop")}, .allowFailure = true};
}

CommandSteps switchOnSteps(const QString &brew, const QString &colima, bool colimaRunning)
{
    CommandSteps steps;
    if (colimaRunning) steps += stopColima(colima, QStringLiteral("colima stop (the login service restarts it)"));
    steps += {
        .label = QStringLiteral("brew services start colima"),
        .exe = brew,
        .args = {QStringLiteral("services"), QStringLiteral("start"), QStringLiteral("colima")},
    };
    return steps;
}

/// Leaves Colima running, started by hand.
CommandSteps switchOffSteps(const QString &brew, const QString &colima)
{
    return {
        {
            .label = QStringLiteral("brew services stop colima"),
            .exe = brew,
            .args = {QStringLiteral("services"), QStringLiteral("stop"), QStringLiteral("colima")},
            .allowFailure = true,
        },
        {.label = QStringLiteral("colima start"), .exe = colima, .args = ColimaManager::startArguments()},
    };
}

} // namespace

const QStringList &ColimaManager::homebrewDirs()
{
    static const QStringList dirs{QStringLiteral("/opt/homebrew/bin"), QStringLiteral("/usr/local/bin")};
    return dirs;
}

const QStringList &ColimaManager::startArguments()
{
    static const QStringList arguments{
        QStringLiteral("start"), QStringLiteral("--cpu"),  QStringLiteral("2"),  QStringLiteral("--memory"),
        QStringLiteral("2"),     QStringLiteral("--disk"), QStringLiteral("10"),
    };
    return arguments;
}

std::optional<QString> ColimaManager::findHomebrew() { return Tools::find(QStringLiteral("brew"), homebrewDirs()); }

std::optional<QString> ColimaManager::find() { return Tools::find(QStringLiteral("colima"), homebrewDirs()); }

std::optional<QString> ColimaManager::expectedColimaPath()
{
    if (const auto colima = find()) return colima;
    const auto brew = findHomebrew();
    if (!brew) return std::nullopt;
    return QFileInfo(*brew).path() + QStringLiteral("/colima");
}

CommandSteps ColimaManager::installSteps()
{
    const auto brew = findHomebrew();
    const auto colima = expectedColimaPath();
    if (!brew || !colima) return {};
    return {
        {
            .label = QStringLiteral("brew install colima docker"),
            .exe = *brew,
            .args = {QStringLiteral("install"), QStringLiteral("colima"), QStringLiteral("docker")},
            // Since Homebrew 6 an installation asks first whether it may begin, where it believes that somebody can
            // answer.
            .env = {{QStringLiteral("HOMEBREW_NO_ENV_HINTS"), QStringLiteral("1")},
                    {QStringLiteral("HOMEBREW_NO_ASK"), QStringLiteral("1")}},
        },
        {
            .label = QStringLiteral("colima ") + startArguments().join(u' '),
            .exe = *colima,
            .args = startArguments(),
        },
    };
}

CommandSteps ColimaManager::startSteps(bool clearAwayFirst)
{
    const auto colima = find();
    if (!colima) return {};
    CommandSteps steps;
    if (clearAwayFirst) {
        steps += {
            .label = QStringLiteral("colima stop --force"),
            .exe = *colima,
            .args = {QStringLiteral("stop"), QStringLiteral("--force")},
            .allowFailure = true,
        };
    }
    steps += {.label = QStringLiteral("colima start"), .exe = *colima, .args = startArguments()};
    return steps;
}

CommandSteps ColimaManager::autostartSteps(bool enable, bool colimaRunning)
{
    const auto brew = findHomebrew();
    const auto colima = find();
    if (!brew || !colima) return {};
    return enable ? switchOnSteps(*brew, *colima, colimaRunning) : switchOffSteps(*brew, *colima);
}

QCoro::Task<bool> ColimaManager::supportsPortForwarderFlag()
{
    const auto colima = find();
    if (!colima) co_return false;
    const Command help(*colima, {QStringLiteral("start"), QStringLiteral("--help")});
    const CommandResult result = co_await CommandRunner::run(help.within(kHelpTimeout));
    co_return result.combined().contains(QStringLiteral("--port-forwarder"));
}

CommandSteps ColimaManager::restartWithGrpcSteps()
{
    const auto colima = find();
    if (!colima) return {};
    const QStringList forwarder{QStringLiteral("--port-forwarder"), QStringLiteral("grpc")};
    return {
        stopColima(*colima, QStringLiteral("colima stop")),
        {
            .label = QStringLiteral("colima start --port-forwarder grpc"),
            .exe = *colima,
            .args = startArguments() + forwarder,
        },
    };
}

} // namespace corvane
