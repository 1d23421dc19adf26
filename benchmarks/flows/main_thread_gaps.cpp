#include "benchmarks/exec/measure.h"
#include "benchmarks/flows/gap_timer.h"
#include "exec/keychain.h"
#include "tests/story/model_on_mac.h"
#include "tests/story/story.h"

#include <QCoreApplication>
#include <QCoro/QCoroTask>
#include <QProcess>
#include <QSocketNotifier>

#include <unistd.h>

#include <algorithm>
#include <cstdio>

namespace {

using namespace corvane;
using namespace corvane::test;
using bench::GapTimer;

constexpr double kAllowed = 30; // milliseconds that a flow's longest gap may be longer than an idle program's

/// The same timer in a program that does nothing else: what this host itself costs at that moment.
int beIdle()
{
    GapTimer gaps;
    QSocketNotifier questions(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&questions, &QSocketNotifier::activated, &questions, [&gaps] {
        char byte = 0;
        if (::read(STDIN_FILENO, &byte, 1) <= 0) return QCoreApplication::quit();
        std::printf("%.3f\n", gaps.takeLongest());
        std::fflush(stdout);
    });
    return QCoreApplication::exec();
}

class IdleProgram {
public:
    IdleProgram() { m_process.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--idle")}); }
    ~IdleProgram()
    {
        m_process.closeWriteChannel();
        m_process.waitForFinished();
    }

    /// Its longest gap since the last call, in milliseconds.
    double takeLongest()
    {
        m_process.write("?");
        while (!m_process.canReadLine() && m_process.waitForReadyRead()) {
        }
        return m_process.readLine().trimmed().toDouble();
    }

private:
    QProcess m_process;
};

double keychainCall(const QString &password)
{
    QElapsedTimer time;
    time.start();
    if (!Keychain::save(password)) std::printf("The keychain did not answer.\n");
    return static_cast<double>(time.nsecsElapsed()) / 1e6;
}

struct Row {
    QString text;
    double gap;
    double idle;
    /// What the one call that must be made on the main thread cost, measured by itself.
    double keychain;

    [[nodiscard]] double excess() const { return gap - idle - keychain; }
};

Row measured(const Story::Step &step, GapTimer &gaps, IdleProgram &idle, double keychain)
{
    static_cast<void>(idle.takeLongest());
    static_cast<void>(gaps.takeLongest());
    step.act();
    const double longest = gaps.takeLongest();
    const QString problem = step.problem();
    if (!problem.isEmpty()) std::printf("%s: %s\n", qUtf8Printable(step.text), qUtf8Printable(problem));
    const bool savesPassword = step.text.contains(QStringLiteral("generated password"));
    return {step.text, longest, idle.takeLongest(), savesPassword ? keychain : 0};
}

bool print(const QList<Row> &rows)
{
    std::printf("%-72s %9s %9s %9s %9s\n", "longest gap of a 5 ms timer, ms", "flow", "idle", "keychain", "more");
    double worst = 0;
    for (const Row &row : rows) {
        std::printf("%-72s %9.1f %9.1f %9.1f %9.1f\n", qUtf8Printable(row.text), row.gap, row.idle, row.keychain,
                    row.excess());
        worst = std::max(worst, static_cast<double>(row.excess()));
    }
    return corvane::bench::report("worst gap of a flow beyond idling", worst, "ms", worst <= kAllowed, "at most 30");
}

QList<Row> measureStory()
{
    ModelOnMac mac;

    const double keychain = keychainCall(QStringLiteral("measured-word-1"));
    IdleProgram idle;
    GapTimer gaps;
    QList<Row> rows;
    const Story story(mac.model());
    for (const Story::Step &step : story.steps())
        rows += measured(step, gaps, idle, keychain);
    return rows;
}

} // namespace

/// Runs every flow of the story inside a simulated Mac that has Homebrew alone, beside a program that idles.
int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    if (QCoreApplication::arguments().contains(QStringLiteral("--idle"))) return beIdle();
    return print(measureStory()) ? 0 : 1;
}
