#pragma once

#include <QString>

#include <sys/socket.h>
#include <sys/un.h>

#include <optional>

namespace corvane::remote {

/// The address of a socket in the file system, as the system's calls take it.
class LocalAddress {
public:
    /// Where a running Corvane listens; absent when the path is longer than an address may be.
    [[nodiscard]] static std::optional<LocalAddress> ofCorvane();
    [[nodiscard]] static std::optional<LocalAddress> of(const QString &path);

    [[nodiscard]] const sockaddr *pointer() const { return reinterpret_cast<const sockaddr *>(&m_address); }
    [[nodiscard]] socklen_t size() const { return sizeof m_address; }
    [[nodiscard]] const char *path() const { return m_address.sun_path; }

private:
    sockaddr_un m_address = {};
};

} // namespace corvane::remote
