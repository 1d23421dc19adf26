#pragma once

#include "tests/endurance/quick_clock.h"
#include "tests/flows/flow_test.h"
#include "tests/support/begun.h"

namespace corvane::test {

/// A Mac that uses its Pi-hole, and a Corvane that does nothing but look at it, faster than time passes.
class Polling : public MacTest {
protected:
    Polling()
    {
        Mac::reset(QStringLiteral("protected"));
        Mac::ctl(QStringLiteral("pihole login-limit 100000"));
        // Pi-hole counts by a clock that does not hurry: it would take the looks for a flood of questions.
        Mac::ctl(QStringLiteral("pihole question-limit 1000000000"));
        watcher =
            std::make_unique<AppModel>(Surroundings{settings, dialogs, *workspace, *loginItem, quickClock, QUrl()});
        untilBegun(*watcher);
    }
    ~Polling() override { watcher.reset(); }

    /// Lets so many looks go by.
    void pass(qint64 polls)
    {
        const qint64 until = quickClock.polls() + polls;
        while (quickClock.polls() < until)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }

    QuickClock quickClock;
    std::unique_ptr<AppModel> watcher;
};

} // namespace corvane::test
