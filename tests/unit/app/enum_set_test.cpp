#include "app/enum_set.h"

#include <gtest/gtest.h>

namespace corvane::test {

namespace {

enum class Seat : quint8 { First, Second, ThirtyThird = 32, Last = 63 };
using Seats = EnumSet<Seat>;

} // namespace

TEST(EnumSet, Tells_all_of_64_values_apart)
{
    Seats taken;
    for (unsigned place = 0; place < Seats::kMost; ++place) {
        EXPECT_FALSE(taken.contains(static_cast<Seat>(place))) << place;
        taken |= static_cast<Seat>(place);
        EXPECT_TRUE(taken.contains(static_cast<Seat>(place))) << place;
    }
}

TEST(EnumSet, Is_false_only_when_it_is_empty)
{
    EXPECT_FALSE(Seats());
    EXPECT_TRUE(Seats(Seat::First));
    EXPECT_TRUE(Seats(Seat::Last));
}

TEST(EnumSet, Joins_and_intersects)
{
    const Seats some = Seats(Seat::First) | Seat::ThirtyThird;
    const Seats others = Seats(Seat::ThirtyThird) | Seat::Last;
    EXPECT_EQ(some & others, Seats(Seat::ThirtyThird));
    EXPECT_EQ((some | others) & Seat::Last, Seats(Seat::Last));
    EXPECT_FALSE(some & Seat::Second);
    EXPECT_FALSE(some == others);
}

} // namespace corvane::test
