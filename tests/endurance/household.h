#pragma once

#include <QList>

#include <string>

namespace corvane::test {

/// What a process holds of its system.
struct Household {
    qint64 residentBytes = 0;
    qint64 descriptors = 0;
    /// Of the descriptors, those by which threads wake each other. Each worker thread has one of its own, and how many
    /// workers there are depends on the machine's load.
    qint64 wakers = 0;
    qint64 threads = 0;
    qint64 children = 0;

    [[nodiscard]] static Household now();
    [[nodiscard]] qint64 heldByNoThread() const { return descriptors - wakers; }
};

/// A straight line through values that were taken at equal distances.
struct Trend {
    /// From the first value to the last, by the line.
    double growth = 0;
    /// What the growth could be by chance: three times its standard error.
    double noise = 0;

    [[nodiscard]] static Trend of(const QList<double> &values);
    /// Of the values of the second half.
    [[nodiscard]] static Trend ofLastHalf(const QList<double> &values);
};

/// How much of something to do, by the environment, else this much.
[[nodiscard]] qint64 amount(const char *variable, qint64 usual);

} // namespace corvane::test
