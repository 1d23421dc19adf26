// A running program's lines into the open log: what the main thread, the memory and the user's eyes feel of it.

#include "benchmarks/exec/stall_watch.h"
#include "benchmarks/ui/line_watch.h"
#include "benchmarks/ui/printer.h"
#include "benchmarks/ui/screens.h"
#include "ui/fonts.h"
#include "ui/log/log_text_view.h"

#include <QApplication>
#include <QEventLoop>

#include <cstdio>

namespace {

using namespace corvane;
using namespace corvane::bench;

/// How fast a child prints, how much, and when its memory counts as settled.
struct Pace {
    const char *text;
    int lines;
    int perSecond;
    int warmUpLines;
};

constexpr Pace kFlood{"a million lines, as fast as they go", 1'000'000, 0, 100'000};
constexpr Pace kStream{"10,000 lines a second for 5 s", 50'000, 10'000, 10'000};

/// The real screens on a model that no program has touched.
class LogScreens : public Screens {
public:
    LogScreens()
    {
        windows().openMain();
        passTime(500);
    }

    /// The dashboard's log of the container, fed by the follower.
    [[nodiscard]] OperationRunner &openPiholeLog()
    {
        model().setShowWizard(false);
        passTime(200);
        OperationRunner &runner = *model().followOp();
        item("piholeLog").setProperty("op", QVariant::fromValue(&runner));
        show("piholeLogCanvas");
        return runner;
    }

    /// The live log of an operation that the set-up runs.
    [[nodiscard]] OperationRunner &openOperationLog()
    {
        model().setShowWizard(true);
        model().go(2);
        passTime(200);
        item("installLog").setProperty("showDetails", true);
        return *model().installOp();
    }

    void resize(QSize size)
    {
        window().resize(size);
        passTime(200);
    }

    /// Scrolls the log into sight.
    void show(const char *name) { item(name).forceActiveFocus(); }

    [[nodiscard]] bool showsEnd(const char *name) const
    {
        const auto *log = qobject_cast<LogTextView *>(&item(name));
        return log && log->isVisible() && log->position() + log->pageSize() > 0.999;
    }
};

/// Runs a child at that pace into the runner, whose log the canvas shows; false when a figure is over its budget.
bool measure(LogScreens &screens, OperationRunner &runner, const char *canvas, const Pace &pace)
{
    CommandStep step;
    step.label = QStringLiteral("log");
    step.exe = QCoreApplication::applicationFilePath();
    step.args = {QStringLiteral("--print"), QString::number(pace.lines), QString::number(pace.perSecond)};
    const StallWatch stalls;
    const LineWatch lines(runner, screens.window(), pace.warmUpLines);
    QEventLoop loop;
    runner.start(QStringLiteral("Log"), {step}, [&loop](bool) { loop.quit(); });
    screens.show(canvas);
    loop.exec();
    passTime(100);
    if (!runner.succeeded() || runner.lineCount() != pace.lines + 1 || !screens.showsEnd(canvas)) {
        std::fprintf(stderr, "The measurement is void: not every line came, or the newest is out of sight\n");
        std::exit(2);
    }

    std::printf("%s\n", pace.text);
    const bool smooth = stalls.report();
    const bool seen = lines.report();
    return smooth && seen;
}

bool measureAll()
{
    LogScreens screens;
    bool good = true;
    for (const QSize size : {QSize(980, 720), QSize(1600, 1000)}) {
        screens.resize(size);
        for (const bool dashboard : {true, false}) {
            std::printf("-- %s at %d x %d\n", dashboard ? "the dashboard's log" : "an operation's live log",
                        size.width(), size.height());
            OperationRunner &runner = dashboard ? screens.openPiholeLog() : screens.openOperationLog();
            const char *canvas = dashboard ? "piholeLogCanvas" : "installLogLogCanvas";
            for (const Pace &pace : {kFlood, kStream})
                good = measure(screens, runner, canvas, pace) && good;
        }
    }
    return good;
}

} // namespace

int main(int argc, char **argv)
{
    if (argc == 4) {
        printLog(std::atoi(argv[2]), std::atoi(argv[3]));
        return 0;
    }
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setFont(uiFont());
    return measureAll() ? 0 : 1;
}
