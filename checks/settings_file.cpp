#include "checks/settings_file.h"

#include <QFile>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace corvane {

namespace {

constexpr qint64 kMaxSize = 64 * 1024 * 1024;

/// The size of a regular file; absent for everything else and for what is too large.
std::optional<qint64> sizeOf(int descriptor)
{
    struct stat facts = {};
    if (::fstat(descriptor, &facts) != 0 || !S_ISREG(facts.st_mode) || facts.st_size > kMaxSize) return std::nullopt;
    return facts.st_size;
}

} // namespace

std::optional<QByteArray> readSettingsFile(const QString &path)
{
    // The path may be a pipe or a terminal: opening it must not wait. What it is gets checked below.
    const int descriptor = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (descriptor < 0) return std::nullopt;

    QFile file;
    const std::optional<qint64> size = sizeOf(descriptor);
    if (!size || !file.open(descriptor, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle)) {
        ::close(descriptor);
        return std::nullopt;
    }
    // No more than it held when it was opened: it may be growing.
    QByteArray bytes = file.read(*size);
    if (file.error() != QFileDevice::NoError) return std::nullopt;
    return bytes;
}

} // namespace corvane
