#include "app/docker_words.h"

#include "runtime/docker_cli.h"
#include "runtime/tool_failures.h"

namespace corvane {

QString whyDockerFailed(const CommandResult &result)
{
    const QString words = result.combined();
    const FailureReading reading = ToolFailures::docker(words.split(u'\n'));
    return reading.sentence.isEmpty() ? DockerCLI::friendlyError(words) : reading.sentence;
}

QString dockerSays(const CommandResult &result)
{
    if (result.launchError) return DockerCLI::kNotFound;
    if (result.timedOut) return QStringLiteral("docker did not end in time.");
    const QString last = result.combined().section(u'\n', -1).trimmed();
    return last.isEmpty() ? QString() : QStringLiteral("docker says: ") + last;
}

} // namespace corvane
