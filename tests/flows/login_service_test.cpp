#include "tests/flows/in_state.h"

namespace corvane::test {

namespace {

/// Colima runs, and Homebrew starts it at login.
class LoginService : public Engine {
protected:
    LoginService()
    {
        run(model().changeAutostart(true));
        EXPECT_TRUE(model().dockerWorks());
        // From then on it waits for a signal, and for nothing else.
        waitFor([] { return Mac::calls(QStringLiteral("brew")).contains(QStringLiteral("services start colima")); },
                "the service was started");
    }
};

} // namespace

TEST_F(LoginService, Leaves_colima_running_when_it_is_switched_on_where_it_was_on_already)
{
    run(model().changeAutostart(true));
    EXPECT_TRUE(model().dockerWorks()) << "it was stopped, and nobody had started it again";
    EXPECT_TRUE(model().autostartColima());
    EXPECT_TEXT(model().notice(), "");
}

TEST_F(LoginService, Leaves_colima_running_when_all_is_installed_once_more)
{
    model().installColimaAndDocker();
    waitFor([this] { return quiet(); }, "it was installed");
    EXPECT_TRUE(model().dockerWorks());
}

} // namespace corvane::test
