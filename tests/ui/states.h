#pragma once

#include "app/app_model.h"

namespace corvane::test {

// States that a user would see, put straight into the model.

void showRunning(AppModel &app);
void showStopped(AppModel &app);
void showDockerDown(AppModel &app);
void showNotUsed(AppModel &app);
void showUsedButDead(AppModel &app);
void showPaused(AppModel &app, double secondsLeft);

void showChecks(AppModel &app, bool portsTaken);
void showPiholeTests(AppModel &app, bool passed);
void showServices(AppModel &app);
void showBrowsers(AppModel &app);
void showOutcome(AppModel &app, const QString &test, bool passed, const QString &summary);
void showAllPassed(AppModel &app);

/// An operation that runs as long as this lives.
class SleepingOperation {
public:
    explicit SleepingOperation(OperationRunner &runner, const QString &title = QStringLiteral("Working"));
    ~SleepingOperation();

private:
    OperationRunner &m_runner;
};

/// Lines as a container prints them.
[[nodiscard]] QStringList logLines(int count);

} // namespace corvane::test
