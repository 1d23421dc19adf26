#pragma once

#include "app/app_model.h"
#include "tests/flows/fast_clock.h"
#include "tests/flows/mac.h"
#include "tests/flows/memory_settings.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>

namespace corvane::test {

/// A model in a simulated Mac that is put back for each test: real programs, DNS, HTTP and keyring, and a clock that
/// hurries. Who answers its questions is left open.
class MacTest : public testing::Test {
protected:
    MacTest() = default;
    ~MacTest() override;

    /// Puts the Mac into the state and starts the application on it.
    void begin(const QString &state);
    /// Starts the application again: the model reads settings and keychain again.
    void relaunch();
    /// The same without waiting for the keychain.
    void launchModel();
    /// Ends the application and waits for what it had begun.
    void quit();
    /// Runs a flow to its end.
    void run(Flow<> flow);
    /// Lets the event loop run until the condition holds; fails the test when it never does.
    void waitFor(const std::function<bool()> &condition, const char *what);
    /// Waits until the operation has run and all that follows from it is done.
    void waitForOperation(OperationRunner *operation);
    [[nodiscard]] bool quiet() const { return !m_model->underWay() && !m_model->operationRunning(); }

    [[nodiscard]] AppModel &model() { return *m_model; }

    /// Starts the application again on a clock that does not hurry.
    void relaunchInRealTime();

    MemorySettings settings;
    FastClock clock;
    SystemClock realClock;
    Dialogs dialogs;
    std::unique_ptr<Workspace> workspace = systemWorkspace();
    std::unique_ptr<LoginItem> loginItem = systemLoginItem();

private:
    Clock *m_pace = &clock;
    std::unique_ptr<AppModel> m_model;
};

} // namespace corvane::test
