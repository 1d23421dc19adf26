#pragma once

#include "tests/flows/mac_test.h"
#include "tests/flows/user.h"

namespace corvane::test {

/// A flow of the model in a simulated Mac, with a user who answers as told.
class FlowTest : public MacTest {
protected:
    explicit FlowTest(const QString &state) { begin(state); }
    // While the user can still be asked.
    ~FlowTest() override { quit(); }

    User user{dialogs};
};

#define EXPECT_TEXT(actual, expected) EXPECT_EQ((actual).toStdString(), std::string(expected))
#define ASSERT_TEXT(actual, expected) ASSERT_EQ((actual).toStdString(), std::string(expected))

} // namespace corvane::test
