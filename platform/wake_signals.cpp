#include "platform/wake_signals.h"

#include <chrono>

namespace corvane {

namespace {

constexpr std::chrono::milliseconds kBurst{300};

} // namespace

WakeSignals::WakeSignals()
{
    m_burst.setSingleShot(true);
    m_burst.setInterval(kBurst);
    connect(&m_burst, &QTimer::timeout, this, &WakeSignals::woke);
}

void WakeSignals::noticeChange()
{
    // A running timer is left alone, so that an endless burst is reported too.
    if (!m_burst.isActive()) m_burst.start();
}

} // namespace corvane
