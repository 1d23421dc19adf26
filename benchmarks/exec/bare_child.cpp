#include "benchmarks/exec/bare_child.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>

extern char **environ;

namespace corvane::bench {

namespace {

constexpr size_t kChunk = 64 * 1024;

size_t readAll(int descriptor)
{
    size_t size = 0;
    size_t capacity = kChunk;
    char *bytes = static_cast<char *>(std::malloc(capacity));
    for (;;) {
        if (capacity - size < kChunk) bytes = static_cast<char *>(std::realloc(bytes, capacity *= 2));
        const ssize_t count = read(descriptor, bytes + size, kChunk);
        if (count <= 0) break;
        size += static_cast<size_t>(count);
    }
    std::free(bytes);
    return size;
}

} // namespace

const char *childPath() { return BENCH_CHILD; }

size_t captureBarely(std::vector<std::string> command)
{
    int output[2];
    if (pipe2(output, O_CLOEXEC) != 0) return 0;
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, output[1], STDOUT_FILENO);
    std::vector<char *> arguments;
    for (std::string &argument : command)
        arguments.push_back(argument.data());
    arguments.push_back(nullptr);
    pid_t pid = 0;
    const int reason = posix_spawn(&pid, arguments[0], &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    close(output[1]);
    const size_t size = reason == 0 ? readAll(output[0]) : 0;
    close(output[0]);
    if (reason == 0) waitpid(pid, nullptr, 0);
    return size;
}

} // namespace corvane::bench
