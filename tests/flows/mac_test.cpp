#include "tests/flows/mac_test.h"

#include "exec/background.h"
#include "tests/support/begun.h"
#include "tests/support/pass_time.h"

#include <QCoreApplication>
#include <QCoro/QCoroTask>
#include <QDeadlineTimer>

namespace corvane::test {

namespace {

constexpr std::chrono::minutes kPatience{1};

QUrl releaseFeed()
{
    return QUrl(QStringLiteral("https://api.github.com/repos/pi-hole/docker-pi-hole/releases/latest"));
}

} // namespace

MacTest::~MacTest() { quit(); }

void MacTest::begin(const QString &state)
{
    Mac::reset(state);
    relaunch();
}

void MacTest::quit()
{
    m_model.reset();
    waitForWorkers(kPatience);
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void MacTest::relaunch()
{
    launchModel();
    untilBegun(model());
}

void MacTest::launchModel()
{
    m_model.reset();
    m_model =
        std::make_unique<AppModel>(Surroundings{settings, dialogs, *workspace, *loginItem, *m_pace, releaseFeed()});
}

void MacTest::relaunchInRealTime()
{
    m_pace = &realClock;
    relaunch();
}

void MacTest::run(Flow<> flow) { QCoro::waitFor(std::move(flow)); }

void MacTest::waitFor(const std::function<bool()> &condition, const char *what)
{
    const QDeadlineTimer deadline(kPatience);
    bool happened = condition();
    while (!happened && !deadline.hasExpired()) {
        passTime(2);
        happened = condition();
    }
    EXPECT_TRUE(happened) << "never happened: " << what;
}

void MacTest::waitForOperation(OperationRunner *operation)
{
    waitFor([operation] { return operation->ended(); }, "the operation ended");
    waitFor([this] { return quiet(); }, "the model came to rest");
}

} // namespace corvane::test
