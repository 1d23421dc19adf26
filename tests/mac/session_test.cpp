#include "platform/attention.h"
#include "platform/session.h"
#include "tests/mac/played/diary.h"
#include "tests/mac/played/mac.h"

#include <gtest/gtest.h>

namespace corvane::platform {

namespace {

using played::Diary;
using played::Mac;

bool isEnding(const char *event, const char *reason)
{
    Mac::eventId = event;
    Mac::quitReason = reason;
    const bool ending = sessionIsEnding();
    Mac::eventId.clear();
    Mac::quitReason.clear();
    return ending;
}

} // namespace

TEST(MacSession, A_log_out_a_restart_and_a_shut_down_end_the_session)
{
    for (const char *reason : {"rlgo", "rest", "shut"})
        EXPECT_TRUE(isEnding("quit", reason)) << reason;
}

TEST(MacSession, The_Docks_Quit_and_a_script_do_not)
{
    EXPECT_FALSE(isEnding("quit", "")) << "no reason is given";
    EXPECT_FALSE(isEnding("quit", "quia")) << "all applications are to quit, the session goes on";
    EXPECT_FALSE(isEnding("rapp", "shut")) << "a click in the Dock";
    EXPECT_FALSE(isEnding("", "")) << "the menu's own item sends no event";
}

TEST(MacAttention, One_activity_lasts_as_long_as_it_is_kept_and_lets_the_Mac_sleep)
{
    [[maybe_unused]] const QStringList earlier = Diary::take();
    {
        const auto watching = keepWatching();
        EXPECT_EQ(Mac::activities, 1);
        EXPECT_EQ(Diary::take().value(0), QStringLiteral("beginActivity efffff"))
            << "all of what a user started, without the bit that keeps the Mac awake";
    }
    EXPECT_EQ(Mac::activities, 0);
}

} // namespace corvane::platform
