// What one status pass costs beside a shell script that runs the same tools one after another. Run inside a simulated
// Mac:
//   simmac/simmac run --state protected -- build/release/benchmarks/app/bench_status_pass
// Ends with 1 when a pass takes longer than nine tenths of the script.

#include "app/app_model.h"
#include "benchmarks/exec/measure.h"
#include "exec/command_runner.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProcess>

#include <algorithm>
#include <cstdio>
#include <vector>

using namespace corvane;

namespace {

constexpr int kRounds = 41;
constexpr double kBudget = 0.9;

constexpr auto kScript = R"(
/opt/homebrew/bin/docker info --format '{{.ServerVersion}}' >/dev/null
/opt/homebrew/bin/docker inspect --format '{{.State.Status}}|{{if .State.Health}}{{.State.Health.Status}}{{else}}none{{end}}' pihole >/dev/null
/usr/bin/dig @127.0.0.1 -p 53 +time=3 +tries=1 +noall +comments +answer example.com A >/dev/null
/usr/sbin/scutil --dns >/dev/null
)";

class NoSettings final : public SettingsStore {
public:
    [[nodiscard]] QVariant value(const QString & /*key*/) const override { return {}; }
    void setValue(const QString & /*key*/, const QVariant & /*value*/) override {}
};

double milliseconds(const QElapsedTimer &timer) { return static_cast<double>(timer.nsecsElapsed()) / 1e6; }

double median(std::vector<double> values)
{
    std::ranges::nth_element(values, values.begin() + values.size() / 2);
    return values[values.size() / 2];
}

double runScript()
{
    QElapsedTimer timer;
    timer.start();
    QProcess::execute(QStringLiteral("/bin/sh"), {QStringLiteral("-c"), QString::fromLatin1(kScript)});
    return milliseconds(timer);
}

double runPass(AppModel &model)
{
    QElapsedTimer timer;
    timer.start();
    QCoro::waitFor(model.refreshStatus(Stats::Leave));
    return milliseconds(timer);
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    NoSettings settings;
    Dialogs dialogs;
    SystemClock clock;
    const auto workspace = systemWorkspace();
    const auto loginItem = systemLoginItem();
    AppModel model(Surroundings{settings, dialogs, *workspace, *loginItem, clock, QUrl()});

    std::vector<double> scripts;
    std::vector<double> passes;
    for (int round = 0; round < kRounds; ++round) {
        scripts.push_back(runScript());
        passes.push_back(runPass(model));
    }
    if (!model.statusChecked() || !model.answering()) {
        std::puts("Pi-hole does not answer here: run this in a simulated Mac in the state \"protected\".");
        return 2;
    }
    const double ratio = median(passes) / median(scripts);
    std::printf("shell script %.2f ms, status pass %.2f ms\n", median(scripts), median(passes));
    return bench::report("status pass beside the script", ratio, "", ratio <= kBudget, "at most 0.9") ? 0 : 1;
}
