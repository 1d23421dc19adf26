#include "api/call_queue.h"

#include <gtest/gtest.h>

using namespace corvane;

TEST(CallQueue, The_first_caller_enters_at_once)
{
    CallQueue queue;
    const QFuture<bool> first = queue.enter();
    ASSERT_TRUE(first.isFinished());
    EXPECT_TRUE(first.result());
}

TEST(CallQueue, Callers_enter_one_by_one_in_their_order)
{
    CallQueue queue;
    const QFuture<bool> first = queue.enter();
    const QFuture<bool> second = queue.enter();
    const QFuture<bool> third = queue.enter();
    EXPECT_FALSE(second.isFinished());
    queue.leave();
    ASSERT_TRUE(second.isFinished());
    EXPECT_TRUE(second.result());
    EXPECT_FALSE(third.isFinished());
    queue.leave();
    EXPECT_TRUE(third.isFinished());
    queue.leave();
    EXPECT_TRUE(queue.enter().isFinished());
}

TEST(CallQueue, Closing_sends_everybody_away_and_keeps_the_door_shut)
{
    CallQueue queue;
    const QFuture<bool> inside = queue.enter();
    const QFuture<bool> waiting = queue.enter();
    queue.close();
    ASSERT_TRUE(waiting.isFinished());
    EXPECT_FALSE(waiting.result());
    queue.leave();
    const QFuture<bool> late = queue.enter();
    ASSERT_TRUE(late.isFinished());
    EXPECT_FALSE(late.result());
}

TEST(CallQueue, A_queue_that_goes_away_sends_its_callers_away)
{
    QFuture<bool> waiting;
    {
        CallQueue queue;
        EXPECT_TRUE(queue.enter().result());
        waiting = queue.enter();
    }
    ASSERT_TRUE(waiting.isFinished());
    EXPECT_FALSE(waiting.result());
}

TEST(CallQueue, A_turn_that_goes_out_of_scope_lets_the_next_in)
{
    CallQueue queue;
    EXPECT_TRUE(queue.enter().result());
    const QFuture<bool> waiting = queue.enter();
    {
        const Turn turn(queue);
        EXPECT_FALSE(waiting.isFinished());
    }
    EXPECT_TRUE(waiting.isFinished());
}
