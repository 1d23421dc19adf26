#include "remote/local_address.h"

#include "exec/app_paths.h"

#include <QFile>

#include <cstring>

namespace corvane::remote {

std::optional<LocalAddress> LocalAddress::ofCorvane()
{
    return of(AppPaths::runningDir().filePath(QStringLiteral("socket")));
}

std::optional<LocalAddress> LocalAddress::of(const QString &path)
{
    const QByteArray bytes = QFile::encodeName(path);
    LocalAddress address;
    if (static_cast<std::size_t>(bytes.size()) >= sizeof address.m_address.sun_path) return std::nullopt;
    address.m_address.sun_family = AF_UNIX;
    std::memcpy(address.m_address.sun_path, bytes.constData(), static_cast<std::size_t>(bytes.size()));
    return address;
}

} // namespace corvane::remote
