#include "remote/instance.h"

#include "exec/app_paths.h"

#include <QFile>

#include <fcntl.h>

#include <cerrno>

namespace corvane::remote {

namespace {

FileDescriptor openedFile()
{
    const QByteArray path = QFile::encodeName(AppPaths::runningDir().filePath(QStringLiteral("lock")));
    return FileDescriptor(::open(path.constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600));
}

/// The whole file, for one alone.
struct flock wholeFile()
{
    struct flock lock = {};
    lock.l_type = F_WRLCK;
    lock.l_whence = SEEK_SET;
    return lock;
}

} // namespace

Instance::Instance()
    : m_file(openedFile())
{
    claim();
}

void Instance::claim()
{
    struct flock lock = wholeFile();
    const bool claimed = m_file.isOpen() && ::fcntl(m_file.number(), F_SETLK, &lock) == 0;
    m_taken = m_file.isOpen() && !claimed && (errno == EACCES || errno == EAGAIN);
}

std::optional<pid_t> Instance::running()
{
    const FileDescriptor file = openedFile();
    struct flock lock = wholeFile();
    if (!file.isOpen() || ::fcntl(file.number(), F_GETLK, &lock) != 0 || lock.l_type == F_UNLCK) return std::nullopt;
    return lock.l_pid;
}

} // namespace corvane::remote
