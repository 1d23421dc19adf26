#pragma once

#include <QtGlobal>

#include <chrono>

namespace corvane {

/// What one exchange with Pi-hole may cost in time and memory.
struct ExchangeLimits {
    /// Without a sign of life for this long, an exchange is given up.
    std::chrono::milliseconds inactivity{8'000};
    /// The same for webAnswers().
    std::chrono::milliseconds pageInactivity{5'000};
    /// No exchange lasts longer, however lively.
    std::chrono::milliseconds whole{30'000};
    /// The same two for a run of the block lists: a slow list server may keep it silent for long.
    std::chrono::milliseconds longInactivity{150'000};
    std::chrono::milliseconds longWhole{900'000};
    qint64 jsonBytes = qint64{8} << 20;
    qint64 archiveBytes = qint64{256} << 20;
};

} // namespace corvane
