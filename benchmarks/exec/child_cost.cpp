// What it costs to start a program and to capture 512 MiB of its output, beside posix_spawn and a bare read loop.

#include "benchmarks/exec/bare_child.h"
#include "benchmarks/exec/measure.h"
#include "benchmarks/exec/peer.h"
#include "exec/child_process.h"
#include "exec/command_runner.h"
#include "exec/data_box.h"

#include <QProcess>

#include <cstdio>
#include <cstdlib>

namespace {

using namespace corvane;
using namespace corvane::bench;

constexpr size_t kMebibyte = 1024 * 1024;
constexpr int kMebibytes = 512;
constexpr int kStartsEach = 100;
constexpr int kRounds = 15;

QString child() { return QString::fromUtf8(childPath()); }
QStringList toEnd() { return {QStringLiteral("exit"), QStringLiteral("0")}; }
Command ending() { return Command(child(), toEnd()); }
Command printing(int mebibytes) { return Command(child(), {QStringLiteral("line"), QString::number(mebibytes)}); }

void insist(bool claim, const char *what)
{
    if (claim) return;
    std::fprintf(stderr, "The measurement is void: %s\n", what);
    std::exit(2);
}

void captureBytes()
{
    const auto started = ChildProcess::start(printing(kMebibytes), ChildProcess::era());
    insist(started.has_value(), "the child did not start");
    DataBox output;
    DataBox error;
    (void)(*started)->readUntilEnd([&](int from) { return output.readFrom(from); },
                                   [&](int from) { return error.readFrom(from); },
                                   ChildProcess::Clock::time_point::max());
    insist(output.size() == qsizetype(kMebibytes * kMebibyte), "not every byte came");
}

void captureText()
{
    const CommandResult result = CommandRunner::runSync(printing(kMebibytes).within(std::chrono::minutes(10)));
    insist(result.standardOutput.size() == qsizetype(kMebibytes * kMebibyte), "not every character came");
}

void captureBare()
{
    const size_t size = captureBarely({childPath(), "line", std::to_string(kMebibytes)});
    insist(size == kMebibytes * kMebibyte, "not every byte came to the bare loop");
}

void startMany()
{
    for (int i = 0; i < kStartsEach; ++i) {
        insist(CommandRunner::runSync(ending().within(std::chrono::minutes(1))).succeeded(), "a child failed");
    }
}

void startManyBare()
{
    for (int i = 0; i < kStartsEach; ++i)
        insist(captureBarely({childPath(), "exit", "0"}) == 0, "a child printed");
}

void startManyWithQProcess()
{
    for (int i = 0; i < kStartsEach; ++i)
        insist(QProcess::execute(child(), toEnd()) == 0, "a child of QProcess failed");
}

bool compareStarts()
{
    const QStringList starts = QStringList{QString::number(kStartsEach), child()} + toEnd();
    Peer python(QStringLiteral("python3"), QStringList{QStringLiteral(BENCH_PEERS "/starts.py")} + starts);
    Peer node(QStringLiteral("node"), QStringList{QStringLiteral(BENCH_PEERS "/starts.mjs")} + starts);
    std::vector<Contender> contenders{
        {"bare", startManyBare},
        {"runner", startMany},
        {"QProcess", startManyWithQProcess},
        {"Python's subprocess", [&] { insist(python.round() == kStartsEach, "a child of Python failed"); }},
        {"Node's execFile", [&] { insist(node.round() == kStartsEach, "a child of Node failed"); }},
    };
    takeTurns(contenders, kRounds);
    const double bare = contenders[0].median();
    const double runner = contenders[1].median();
    std::printf("start and end of a child: bare %.3f ms, CommandRunner %.3f ms\n", 1000 * bare / kStartsEach,
                1000 * runner / kStartsEach);
    const bool keeps = report("start of a child, cost beside bare posix_spawn", runner / bare, "", runner / bare <= 1.1,
                              "at most 1.1");
    for (std::size_t i = 2; i < contenders.size(); ++i)
        beside(contenders[i].name, contenders[i].median() / bare);
    return keeps;
}

bool compareCaptures()
{
    std::vector<Contender> contenders{{"bare", captureBare}, {"bytes", captureBytes}, {"text", captureText}};
    takeTurns(contenders, kRounds);
    const double bare = contenders[0].median();
    const double bytes = contenders[1].median();
    const double text = contenders[2].median();
    std::printf("512 MiB: bare loop %.0f MiB/s, capture %.0f MiB/s, capture and text %.0f MiB/s\n", kMebibytes / bare,
                kMebibytes / bytes, kMebibytes / text);
    std::printf("speed of capture with the text made, beside the bare loop: %.3f\n", bare / text);
    return report("speed of capture beside the bare loop", bare / bytes, "", bare / bytes >= 0.9, "at least 0.9");
}

} // namespace

int main()
{
    const bool startsKeep = compareStarts();
    const bool capturesKeep = compareCaptures();
    return startsKeep && capturesKeep ? 0 : 1;
}
