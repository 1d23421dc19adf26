#pragma once

#include <QFile>

#include <sys/inotify.h>
#include <unistd.h>

namespace corvane::test {

/// Notices whether anybody opens a folder or a file right in it.
class Reads {
public:
    explicit Reads(const QString &folder)
    {
        m_watched = ::inotify_add_watch(m_queue, QFile::encodeName(folder).constData(), IN_OPEN | IN_ACCESS) >= 0;
    }
    ~Reads() { ::close(m_queue); }
    Reads(const Reads &) = delete;
    Reads &operator=(const Reads &) = delete;

    /// Whether somebody did since this was asked last; a folder that cannot be watched counts as read.
    [[nodiscard]] bool any() const
    {
        char events[4096];
        return !m_watched || ::read(m_queue, events, sizeof events) > 0;
    }

private:
    int m_queue = ::inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
    bool m_watched = false;
};

} // namespace corvane::test
