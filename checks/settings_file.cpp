#include "checks/settings_file.h"

#include <QFile>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace corvane {

namespace {

constexpr qint64 kMaxSize = 64 * 1024 * 1024;

bool isRegular(int descriptor)
{
    struct stat facts = {};
    return ::fstat(descriptor, &facts) == 0 && S_ISREG(facts.st_mode) && facts.st_size <= kMaxSize;
}

} // namespace

std::optional<QByteArray> readSettingsFile(const QString &path)
{
    // Opening a pipe or a terminal must neither wait nor take it over; what it is shows once it is open.
    const int descriptor = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (descriptor < 0) return std::nullopt;

    QFile file;
    if (!isRegular(descriptor) || !file.open(descriptor, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle)) {
        ::close(descriptor);
        return std::nullopt;
    }
    QByteArray bytes = file.read(kMaxSize + 1); // it may have grown since
    if (file.error() != QFileDevice::NoError || bytes.size() > kMaxSize) return std::nullopt;
    return bytes;
}

} // namespace corvane
