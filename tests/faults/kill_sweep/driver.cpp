#include "app/app_model.h"
#include "tests/flows/user.h"
#include "tests/support/begun.h"

#include <QCoreApplication>
#include <QCoro/QCoroTask>

#include <cstdio>

/// Runs one flow of Corvane with the real settings and the real clock, and says when it begins and when it has ended.
/// Made to be killed in between.

namespace corvane::test {

namespace {

constexpr const char *kFeed = "https://api.github.com/repos/pi-hole/docker-pi-hole/releases/latest";

Flow<> begin(AppModel &model, const QString &flow)
{
    if (flow == QLatin1String("update")) return model.performUpdate();
    if (flow == QLatin1String("port")) return model.changeWebPort(8083);
    return model.removePihole();
}

int drive(const QString &flow)
{
    const auto settings = systemSettingsStore();
    const auto workspace = systemWorkspace();
    const auto loginItem = systemLoginItem();
    Dialogs dialogs;
    const User user(dialogs);
    SystemClock clock;
    AppModel model({*settings, dialogs, *workspace, *loginItem, clock, QUrl(QString::fromLatin1(kFeed))});
    untilBegun(model);
    model.setLatestTag(QStringLiteral("2026.10.0"));

    std::puts("begin");
    std::fflush(stdout);
    QCoro::waitFor(begin(model, flow));
    while (model.maintOp()->running())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 5);
    std::puts("end");
    std::fflush(stdout);
    std::_Exit(0); // what follows is not watched
}

} // namespace

} // namespace corvane::test

int main(int argc, char **argv)
{
    QCoreApplication::setOrganizationName(QStringLiteral("Corvane"));
    QCoreApplication::setApplicationName(QStringLiteral("Corvane"));
    const QCoreApplication app(argc, argv);
    return corvane::test::drive(app.arguments().value(1));
}
