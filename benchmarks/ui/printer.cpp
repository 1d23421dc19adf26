#include "benchmarks/ui/printer.h"

#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <string>
#include <thread>

namespace corvane::bench {

namespace {

constexpr size_t kBlock = 4096;
constexpr int kBurstsPerSecond = 1000;

/// Everything to standard output; false once nobody reads any more.
bool writeOut(std::string &bytes)
{
    for (size_t written = 0; written < bytes.size();) {
        const ssize_t count = ::write(STDOUT_FILENO, bytes.data() + written, bytes.size() - written);
        if (count <= 0) return false;
        written += static_cast<size_t>(count);
    }
    bytes.clear();
    return true;
}

void addLine(std::string &bytes, int number)
{
    bytes += std::to_string(nowNs());
    bytes += " dnsmasq[271]: query[A] host-";
    bytes += std::to_string(number);
    bytes += ".example.com from 172.18.0.1, forwarded to 1.1.1.1\n";
}

} // namespace

std::int64_t nowNs()
{
    return std::chrono::duration_cast<std::chrono::nanoseconds>(std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

void printLog(int lines, int perSecond)
{
    const auto start = std::chrono::steady_clock::now();
    const int burst = perSecond / kBurstsPerSecond;
    std::string block;
    for (int line = 0; line < lines; ++line) {
        addLine(block, line);
        const bool burstIsFull = burst > 0 && (line + 1) % burst == 0;
        if (!burstIsFull && block.size() < kBlock) continue;
        if (!writeOut(block)) return;
        if (burstIsFull) std::this_thread::sleep_until(start + std::chrono::milliseconds((line + 1) / burst));
    }
    writeOut(block);
}

std::int64_t madeAt(QStringView line)
{
    std::int64_t moment = 0;
    for (const QChar character : line) {
        if (!character.isDigit()) break;
        moment = moment * 10 + character.digitValue();
    }
    return moment;
}

} // namespace corvane::bench
