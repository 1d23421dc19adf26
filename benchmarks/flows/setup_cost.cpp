// What Corvane itself costs during the whole set-up, beside the tools that it runs. Run inside a simulated Mac whose
// tools take their real seconds:
//   simmac/simmac run --speed real --state homebrew --keyring -- build/release/benchmarks/flows/bench_setup_cost
// Ends with 1 when its processor time is over 2 % of the tools' own time.

#include "benchmarks/exec/measure.h"
#include "tests/flows/mac.h"
#include "tests/story/model_on_mac.h"
#include "tests/story/story.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <sys/resource.h>

#include <cstdio>

namespace {

using namespace corvane;
using namespace corvane::test;

constexpr double kAllowed = 0.02;

/// What the process has used of the processors, without its children, in seconds.
double processorSeconds()
{
    rusage used = {};
    ::getrusage(RUSAGE_SELF, &used);
    const auto seconds = [](const timeval &time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
    };
    return seconds(used.ru_utime) + seconds(used.ru_stime);
}

/// How long the tools ran, in seconds.
double toolSeconds()
{
    double sum = 0;
    for (const QJsonObject &call : Mac::journal()) {
        const double end = call.value(QStringLiteral("end")).toDouble();
        if (end > 0) sum += end - call.value(QStringLiteral("start")).toDouble();
    }
    return sum;
}

bool runStory(AppModel &model)
{
    bool good = true;
    const Story story(model);
    for (const Story::Step &step : story.steps()) {
        step.act();
        const QString problem = step.problem();
        if (!problem.isEmpty()) std::printf("%s: %s\n", qUtf8Printable(step.text), qUtf8Printable(problem));
        good = good && problem.isEmpty();
    }
    return good;
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    ModelOnMac mac;

    QElapsedTimer elapsed;
    elapsed.start();
    const double before = processorSeconds();
    if (!runStory(mac.model())) return 2;
    const double own = processorSeconds() - before;
    const double tools = toolSeconds();
    std::printf("set-up and way back %.1f s; the tools ran %.1f s, Corvane used %.2f s of a processor\n",
                static_cast<double>(elapsed.elapsed()) / 1000, tools, own);
    return bench::report("processor time beside the tools' own time", own / tools, "", own <= kAllowed * tools,
                         "at most 0.02")
               ? 0
               : 1;
}
