#pragma once

#include "app/app_model.h"
#include "tests/flows/fast_clock.h"
#include "tests/flows/mac.h"
#include "tests/flows/memory_settings.h"
#include "tests/flows/user.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>

namespace corvane::test {

/// A model in a simulated Mac that was put back for this test: real programs, DNS, HTTP and keyring, a clock that
/// hurries, and a user who answers as told.
class FlowTest : public testing::Test {
protected:
    explicit FlowTest(const QString &state);
    ~FlowTest() override;

    /// Starts the application anew: the model reads settings and keychain again.
    void relaunch();
    /// Runs a flow to its end.
    void run(QCoro::Task<> flow);
    /// Lets the event loop run until the condition holds; fails the test when it never does.
    void waitFor(const std::function<bool()> &condition, const char *what);
    /// Waits until the operation has run and all that follows from it is done.
    void waitForOperation(OperationRunner *operation);
    [[nodiscard]] bool quiet() const { return m_model->busy().isEmpty() && !m_model->operationRunning(); }

    [[nodiscard]] AppModel &model() { return *m_model; }

    MemorySettings settings;
    FastClock clock;
    Dialogs dialogs;
    User user{dialogs};
    std::unique_ptr<Workspace> workspace = systemWorkspace();
    std::unique_ptr<LoginItem> loginItem = systemLoginItem();

private:
    std::unique_ptr<AppModel> m_model;
};

#define EXPECT_TEXT(actual, expected) EXPECT_EQ((actual).toStdString(), std::string(expected))
#define ASSERT_TEXT(actual, expected) ASSERT_EQ((actual).toStdString(), std::string(expected))

} // namespace corvane::test
