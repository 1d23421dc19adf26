#include "tests/story/model_on_mac.h"
#include "tests/story/story.h"

#include <QCoreApplication>
#include <QCoro/QCoroTask>

#include <cstdio>

namespace {

using namespace corvane;
using namespace corvane::test;

void say(const char *mark, const QString &text) { std::printf("%s  %s\n", mark, qUtf8Printable(text)); }

/// Tells the steps one after another as they happen; whether all went well. The first that does not ends the story.
bool tell(const Story &story)
{
    for (const Story::Step &step : story.steps()) {
        step.act();
        const QString problem = step.problem();
        say(problem.isEmpty() ? "✓" : "✗", step.text);
        std::fflush(stdout);
        if (problem.isEmpty()) continue;
        say(" ", problem);
        return false;
    }
    return true;
}

} // namespace

/// Runs inside a simulated Mac that has Homebrew and nothing else.
int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    ModelOnMac mac;

    const bool good = tell(Story(mac.model()));
    std::printf("%s\n", good ? "From a bare Mac to a protected one, and back." : "The story ended early.");
    return good ? 0 : 1;
}
