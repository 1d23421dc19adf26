// What the sections of the day cost the dashboard while Pi-hole holds 100,000 questions: memory, and time between two
// frames.

#include "benchmarks/exec/measure.h"
#include "benchmarks/exec/stall_watch.h"
#include "benchmarks/ui/screens.h"
#include "tests/flows/mac.h"
#include "tests/support/begun.h"
#include "ui/fonts.h"

#include <QApplication>
#include <QCoro/QCoroTask>
#include <QFile>
#include <QProcess>
#include <QQmlComponent>
#include <QQuickItem>

#include <algorithm>
#include <cstdio>

namespace {

using namespace corvane;
using namespace corvane::bench;

constexpr int kRounds = 9;
constexpr int kPasses = 20;
constexpr double kMemoryAllowed = 4; // MiB
constexpr double kWorkAllowed = 16;  // milliseconds
const QStringList kSections{QStringLiteral("DayBox"), QStringLiteral("RepairBox"), QStringLiteral("ListsBox")};

void look(AppModel &model)
{
    QCoro::waitFor(model.refreshStatus(Stats::Include));
    QCoro::waitFor(model.refreshStatus(Stats::Leave));
}

/// The dashboard's text without these sections.
QByteArray dashboardText(const QStringList &without)
{
    QFile file(QStringLiteral(":/qt/qml/Corvane/dashboard/DashboardView.qml"));
    if (!file.open(QIODevice::ReadOnly)) qFatal("There is no dashboard.");
    QString text = QString::fromUtf8(file.readAll());
    for (const QString &section : without) {
        const auto start = text.indexOf(QStringLiteral("    %1 {\n").arg(section));
        const auto end = text.indexOf(QStringLiteral("\n    }\n"), start);
        if (start < 0 || end < 0) qFatal("There is no %s.", qUtf8Printable(section));
        text.remove(start, end - start + 7);
    }
    return text.toUtf8();
}

/// Shows the dashboard without these sections for some looks and prints what the process then keeps in memory.
int weigh(const QStringList &without)
{
    Screens screens;
    test::untilBegun(screens.model());
    const auto engine = screens.makeEngine();
    QQmlComponent component(engine.get());
    component.setData(dashboardText(without), QUrl(QStringLiteral("qrc:/qt/qml/Corvane/dashboard/Weighed.qml")));
    const std::unique_ptr<QObject> made(component.create());
    auto *view = qobject_cast<QQuickItem *>(made.get());
    if (!view) qFatal("%s", qUtf8Printable(component.errorString()));
    QQuickWindow window;
    window.resize(980, 720);
    view->setParentItem(window.contentItem());
    view->setSize(window.size());
    window.show();
    for (int pass = 0; pass < 3; ++pass)
        look(screens.model());
    passTime(300);
    if (!screens.model().summary() || screens.model().history().has_value() == without.contains(kSections.first())) {
        std::fprintf(stderr, "The measurement is void: the dashboard did not show what it should. %s %s\n",
                     qUtf8Printable(screens.model().apiMessage()), qUtf8Printable(screens.model().historyProblem()));
        return 2;
    }
    std::printf("%.3f\n", residentMiB());
    return 0;
}

double weighed(const QStringList &without)
{
    QProcess child;
    child.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    child.start(QCoreApplication::applicationFilePath(), QStringList{QStringLiteral("--weigh")} + without);
    child.waitForFinished(-1);
    if (child.exitCode() != 0) std::exit(2);
    return child.readAllStandardOutput().trimmed().toDouble();
}

double median(QList<double> values)
{
    std::ranges::sort(values);
    return values.at(values.size() / 2);
}

bool measureMemory()
{
    QList<double> added;
    QList<double> without;
    for (int round = 0; round < kRounds; ++round) {
        without << weighed(kSections);
        added << weighed({}) - without.last();
    }
    const double more = median(added);
    const bool allowed = report("memory that the day's sections add", more, "MiB", more <= kMemoryAllowed, "at most 4");
    beside("the process with the dashboard without them", median(without));
    return allowed;
}

/// Everything open, and one look after the other.
bool measureFrames()
{
    Screens screens;
    AppModel &model = screens.model();
    test::untilBegun(model);
    model.setShowWizard(false);
    screens.windows().openMain();
    look(model);
    const auto watching = model.repair()->watch();
    screens.item("repairSwitch").forceActiveFocus();
    passTime(4000);
    const StallWatch stalls;
    for (int pass = 0; pass < kPasses; ++pass) {
        look(model);
        passTime(200);
    }
    if (!model.history() || model.repair()->names().size() < 100 || !model.repair()->trouble().isEmpty()) {
        std::fputs("The measurement is void: the day or the blocked names were not read.\n", stderr);
        std::exit(2);
    }
    static_cast<void>(stalls.report());
    const double work = stalls.mostWork();
    return report("most computed at once, reading and drawing a busy day", work, "ms", work <= kWorkAllowed,
                  "at most 16");
}

} // namespace

/// Run it in a simulated Mac with a desktop, in the state "protected".
int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setFont(uiFont());
    const QStringList words = QCoreApplication::arguments();
    if (words.value(1) == QLatin1String("--weigh")) return weigh(words.sliced(2));
    test::Mac::ctl(QStringLiteral("pihole-day 100000 3000"));
    test::Mac::ctl(QStringLiteral("pihole login-limit 1000"));
    test::Mac::ctl(QStringLiteral("pihole seats 100"));
    const bool light = measureMemory();
    const bool smooth = measureFrames();
    return light && smooth ? 0 : 1;
}
