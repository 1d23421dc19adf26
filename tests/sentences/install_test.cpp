#include "tests/sentences/on_screen.h"

namespace corvane::test {

namespace {

/// What step 3 says while Colima and docker are installed, started and tested.
class Install : public OnScreen {};

const char *const kUnknownError = "Docker reported an error. Open 'Show details' to read it.";

} // namespace

TEST_F(Install, Tells_its_steps)
{
    begin("homebrew");
    openStep(3);
    pressButton("Install Colima and Docker");
    EXPECT_TRUE(appear({"Turning on Colima at login", "Finished."}));
    settle();
    EXPECT_TRUE(logged("installLog", "> colima stop (the login service restarts it)"));
    EXPECT_TRUE(logged("installLog", "> brew services start colima"));

    begin("homebrew");
    model().setAutostartColima(false);
    openStep(3);
    pressButton("Install Colima and Docker");
    EXPECT_TRUE(appear({"Installing Colima and Docker", "Finished."}));
    EXPECT_TRUE(logged("installLog", "> brew install colima docker"));
    EXPECT_TRUE(logged("installLog", "> colima start --cpu 2 --memory 2 --disk 10"));
}

TEST_F(Install, Tells_when_it_fails)
{
    begin("homebrew");
    mac("colima|fail|error starting vm");
    openStep(3);
    pressButton("Install Colima and Docker");
    EXPECT_TRUE(appears(kUnknownError));
    EXPECT_TRUE(logged("installLog", "Command ended with status 1."));
}

TEST_F(Install, Can_be_cancelled)
{
    begin("homebrew");
    mac("fault brew hang --at 1");
    openStep(3);
    pressButton("Install Colima and Docker");
    pressButton("Cancel");
    EXPECT_TRUE(appears("Cancelled."));
}

TEST_F(Install, Names_a_program_that_cannot_be_started)
{
    begin("homebrew");
    mac("fault brew fail 0"); // it says that all went well, and installs nothing
    openStep(3);
    pressButton("Install Colima and Docker");
    EXPECT_TRUE(appears(kUnknownError));
    EXPECT_TRUE(logged("installLog", "Could not start colima: No such file or directory"));
}

TEST_F(Install, Starts_colima)
{
    begin("stopped");
    openStep(3);
    pressButton("Start Colima");
    EXPECT_TRUE(appear({"Starting Colima", "Finished."}));
    EXPECT_TRUE(logged("installLog", "> colima start"));
}

TEST_F(Install, Turns_the_start_at_login_off)
{
    begin("running");
    openStep(3);
    click(QStringLiteral("stepAutostartSwitch"));
    pressButton("Continue");
    EXPECT_TRUE(appear({"Turning off Colima at login", "Finished."}));
    EXPECT_TRUE(logged("installLog", "> brew services stop colima"));
    EXPECT_TRUE(logged("installLog", "> colima start"));
    settle();
}

TEST_F(Install, Names_a_tool_that_is_missing)
{
    begin("homebrew");
    openStep(3);
    pressButton("Start Colima");
    EXPECT_TRUE(appears("Colima was not found."));
    pressButton("Dismiss");
    mac("fault brew vanish");
    pressButton("Install Colima and Docker");
    EXPECT_TRUE(appears("Homebrew was not found."));
}

TEST_F(Install, The_docker_test_is_told_at_the_end)
{
    begin("stopped");
    openStep(3);
    pressButton("Test");
    settle();
    openStep(8);
    EXPECT_TRUE(appears("docker info failed"));
    mac("engine start");
    openStep(3);
    pressButton("Test");
    settle();
    openStep(8);
    EXPECT_TRUE(appears("docker info works"));
}

} // namespace corvane::test
