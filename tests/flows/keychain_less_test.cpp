#include "runtime/pihole_controller.h"
#include "tests/flows/in_state.h"

#include <QFile>

namespace corvane::test {

TEST_F(Engine, A_start_without_a_keychain_changes_nothing)
{
    model().setPasswordInput(QStringLiteral("Fresh-Word_7.@+"));
    run(model().startPihole());
    EXPECT_TEXT(model().startMessage(), "The password could not be saved in the Keychain.");
    EXPECT_TEXT(model().adminPassword(), "");
    EXPECT_FALSE(QFile::exists(PiholeController::environmentFile()));
    EXPECT_FALSE(model().startOp()->ended());
    EXPECT_TRUE(quiet());
}

} // namespace corvane::test
