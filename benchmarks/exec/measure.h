#pragma once

#include <functional>
#include <string>
#include <vector>

namespace corvane::bench {

/// One way to do a piece of work.
struct Contender {
    std::string name;
    std::function<void()> work;
    std::vector<double> seconds = {};

    [[nodiscard]] double median() const;
};

/// Runs every contender once, then all of them again, and so on, so that a slow moment of the machine hits them alike.
void takeTurns(std::vector<Contender> &contenders, int rounds);

/// Prints a figure beside what is allowed and answers whether it keeps to it.
bool report(const std::string &what, double figure, const std::string &unit, bool allowed, const std::string &limit);

/// Belongs to the figure reported last: the least that the machine allows, what another program needs for the same
/// work, and a point of a curve.
void lowest(const std::string &what, double figure);
void beside(const std::string &what, double figure);
void point(const std::string &curve, double x, double y);

/// This process's resident memory in MiB: now, and the most it ever was.
[[nodiscard]] double residentMiB();
[[nodiscard]] double peakResidentMiB();

} // namespace corvane::bench
