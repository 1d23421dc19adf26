#include "tests/sentences/on_screen.h"

namespace corvane::test {

class WithoutKeychain : public OnScreen {};

TEST_F(WithoutKeychain, A_start_says_that_the_password_could_not_be_saved)
{
    begin("engine");
    openStep(4);
    pressButton("Start Pi-hole");
    EXPECT_TRUE(appears("The password could not be saved in the Keychain."));
}

} // namespace corvane::test
