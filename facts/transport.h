#pragma once

namespace corvane {

/// How a question or a port is reached.
enum class Transport { Udp, Tcp };

} // namespace corvane
