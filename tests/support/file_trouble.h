#pragma once

#include <QFile>
#include <QString>

#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace corvane::test {

/// Files of this process cannot grow beyond the size: a disk that is full.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t size)
    {
        ::getrlimit(RLIMIT_FSIZE, &m_before);
        m_action = ::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{size, m_before.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit()
    {
        ::setrlimit(RLIMIT_FSIZE, &m_before);
        ::signal(SIGXFSZ, m_action);
    }
    FileSizeLimit(const FileSizeLimit &) = delete;
    FileSizeLimit &operator=(const FileSizeLimit &) = delete;

private:
    rlimit m_before = {};
    void (*m_action)(int) = SIG_DFL;
};

/// Takes the right to change a folder away, from root too, while it lives.
class ReadOnlyFolder {
public:
    explicit ReadOnlyFolder(const QString &path)
        : m_path(QFile::encodeName(path))
    {
        ::chmod(m_path.constData(), 0555);
        m_ready = ::geteuid() != 0 || ::seteuid(kNobody) == 0;
    }
    ~ReadOnlyFolder()
    {
        if (::geteuid() == kNobody && ::getuid() == 0) m_ready = ::seteuid(0) == 0;
        ::chmod(m_path.constData(), 0755);
    }
    ReadOnlyFolder(const ReadOnlyFolder &) = delete;
    ReadOnlyFolder &operator=(const ReadOnlyFolder &) = delete;

    [[nodiscard]] bool ready() const { return m_ready; }

private:
    static constexpr uid_t kNobody = 65534;
    QByteArray m_path;
    bool m_ready = false;
};

} // namespace corvane::test
