#pragma once

namespace corvane {

/// The ports of this Mac on which Pi-hole's admin page may be.
struct WebPorts {
    static constexpr int kDefault = 8080;
    /// What is offered in place of the default.
    static constexpr int kFirstOther = 8081;
    static constexpr int kLast = 8090;

    [[nodiscard]] static constexpr bool contain(int port) { return port >= kDefault && port <= kLast; }
};

} // namespace corvane
