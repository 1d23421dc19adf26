#include "platform/process.h"

#include <fcntl.h>
#include <pthread.h>
#include <pthread/qos.h>
#include <spawn.h>
#include <sys/event.h>
#include <unistd.h>

#include <cerrno>

namespace corvane::platform {

namespace {

void closeKeepingErrno(int descriptor)
{
    const int reason = errno;
    close(descriptor);
    errno = reason;
}

bool addEvent(int queue, uintptr_t ident, int16_t filter, uint32_t notes)
{
    struct kevent change;
    EV_SET(&change, ident, filter, EV_ADD, notes, 0, nullptr);
    return kevent(queue, &change, 1, nullptr, 0, nullptr) == 0;
}

bool makeReadable(int queue)
{
    struct kevent change;
    EV_SET(&change, 0, EVFILT_USER, 0, NOTE_TRIGGER, 0, nullptr);
    return addEvent(queue, 0, EVFILT_USER, 0) && kevent(queue, &change, 1, nullptr, 0, nullptr) == 0;
}

} // namespace

int openPipe(int (&ends)[2])
{
    if (pipe(ends) != 0) return errno;
    for (const int end : ends)
        fcntl(end, F_SETFD, FD_CLOEXEC);
    return 0;
}

int watchExit(pid_t child)
{
    const int queue = kqueue();
    if (queue < 0) return -1;
    fcntl(queue, F_SETFD, FD_CLOEXEC);
    if (addEvent(queue, static_cast<uintptr_t>(child), EVFILT_PROC, NOTE_EXIT | NOTE_EXITSTATUS)) return queue;
    // A child that has already ended and waits to be collected cannot be watched any more.
    if (errno == ESRCH && makeReadable(queue)) return queue;
    closeKeepingErrno(queue);
    return -1;
}

short spawnFlags() { return POSIX_SPAWN_CLOEXEC_DEFAULT; }

int closeOtherDescriptors(posix_spawn_file_actions_t &) { return 0; }

void raiseToUserInitiated() { pthread_set_qos_class_self_np(QOS_CLASS_USER_INITIATED, 0); }

} // namespace corvane::platform
