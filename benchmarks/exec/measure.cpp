#include "benchmarks/exec/measure.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <fstream>

namespace corvane::bench {

namespace {

double statusMiB(const std::string &field)
{
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;) {
        double kibibytes = 0;
        if (word == field && status >> kibibytes) return kibibytes / 1024;
    }
    return 0;
}

} // namespace

double Contender::median() const
{
    std::vector<double> sorted = seconds;
    std::ranges::sort(sorted);
    return sorted.at(sorted.size() / 2);
}

void takeTurns(std::vector<Contender> &contenders, int rounds)
{
    for (int round = 0; round < rounds; ++round) {
        for (Contender &contender : contenders) {
            const auto start = std::chrono::steady_clock::now();
            contender.work();
            contender.seconds.push_back(
                std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
        }
    }
}

bool report(const std::string &what, double figure, const std::string &unit, bool allowed, const std::string &limit)
{
    std::printf("%-58s %10.3f %-8s %s (%s)\n", what.c_str(), figure, unit.c_str(), allowed ? "ok" : "TOO MUCH",
                limit.c_str());
    return allowed;
}

void lowest(const std::string &what, double figure) { std::printf("    floor %-50s %10.3f\n", what.c_str(), figure); }
void beside(const std::string &what, double figure) { std::printf("    peer %-51s %10.3f\n", what.c_str(), figure); }
void point(const std::string &curve, double x, double y) { std::printf("    point %s: %g %g\n", curve.c_str(), x, y); }

double residentMiB() { return statusMiB("VmRSS:"); }
double peakResidentMiB() { return statusMiB("VmHWM:"); }

} // namespace corvane::bench
