#include "tests/flows/fast_clock.h"

namespace corvane::test {

QCoro::Task<> FastClock::pause(Duration time)
{
    m_now += time;
    return m_real.pause(time / kHurry);
}

} // namespace corvane::test
