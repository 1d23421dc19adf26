#include "exec/spawn.h"

#include "exec/tools.h"
#include "platform/process.h"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>

#include <cerrno>
#include <vector>

namespace corvane {

namespace {

/// Strings in the shape in which a program is given them.
class StringVector {
public:
    void add(const QByteArray &string)
    {
        m_hasNul = m_hasNul || string.contains('\0');
        m_strings.push_back(string);
    }

    /// Whether a string holds the character that no program can be given.
    [[nodiscard]] bool hasNul() const { return m_hasNul; }

    [[nodiscard]] std::vector<char *> pointers()
    {
        std::vector<char *> result;
        result.reserve(m_strings.size() + 1);
        for (QByteArray &string : m_strings)
            result.push_back(string.data());
        result.push_back(nullptr);
        return result;
    }

private:
    std::vector<QByteArray> m_strings;
    bool m_hasNul = false;
};

class FileActions {
public:
    FileActions() { posix_spawn_file_actions_init(&m_actions); }
    ~FileActions() { posix_spawn_file_actions_destroy(&m_actions); }
    FileActions(const FileActions &) = delete;
    FileActions &operator=(const FileActions &) = delete;

    void useNullInput() { posix_spawn_file_actions_addopen(&m_actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0); }
    void connect(const FileDescriptor &end, int to) { posix_spawn_file_actions_adddup2(&m_actions, end.number(), to); }
    [[nodiscard]] int closeOthers() { return platform::closeOtherDescriptors(m_actions); }
    [[nodiscard]] const posix_spawn_file_actions_t *get() const { return &m_actions; }

private:
    posix_spawn_file_actions_t m_actions;
};

/// Gives the child the signal mask and the signal dispositions of a fresh program.
class Attributes {
public:
    Attributes()
    {
        posix_spawnattr_init(&m_attributes);
        sigset_t signals;
        sigemptyset(&signals);
        posix_spawnattr_setsigmask(&m_attributes, &signals);
        sigfillset(&signals);
        sigdelset(&signals, SIGKILL);
        sigdelset(&signals, SIGSTOP);
        posix_spawnattr_setsigdefault(&m_attributes, &signals);
        const int flags = POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF | platform::spawnFlags();
        posix_spawnattr_setflags(&m_attributes, static_cast<short>(flags));
    }
    ~Attributes() { posix_spawnattr_destroy(&m_attributes); }
    Attributes(const Attributes &) = delete;
    Attributes &operator=(const Attributes &) = delete;

    [[nodiscard]] const posix_spawnattr_t *get() const { return &m_attributes; }

private:
    posix_spawnattr_t m_attributes;
};

struct Pipe {
    FileDescriptor readEnd;
    FileDescriptor writeEnd;
};

std::expected<Pipe, int> openReadPipe()
{
    int ends[2];
    if (const int reason = platform::openPipe(ends); reason != 0) return std::unexpected(reason);
    Pipe pipe{FileDescriptor(ends[0]), FileDescriptor(ends[1])};
    // The read end alone: the child must find its own streams as any program does.
    fcntl(pipe.readEnd.number(), F_SETFL, O_NONBLOCK);
    return pipe;
}

} // namespace

std::expected<Spawned, int> spawnProgram(const Command &command)
{
    StringVector arguments;
    arguments.add(command.exe().toUtf8());
    for (const QString &argument : command.args())
        arguments.add(argument.toUtf8());
    StringVector variables;
    const auto environment = Tools::environment(command.env());
    for (auto it = environment.begin(); it != environment.end(); ++it)
        variables.add(it.key() + '=' + it.value());
    if (arguments.hasNul() || variables.hasNul()) return std::unexpected(EINVAL);

    const bool apart = command.streams() == Streams::Apart;
    auto output = openReadPipe();
    if (!output) return std::unexpected(output.error());
    std::expected<Pipe, int> error;
    if (apart) error = openReadPipe();
    if (!error) return std::unexpected(error.error());
    FileActions actions;
    actions.useNullInput();
    actions.connect(output->writeEnd, STDOUT_FILENO);
    actions.connect(apart ? error->writeEnd : output->writeEnd, STDERR_FILENO);
    if (const int reason = actions.closeOthers(); reason != 0) return std::unexpected(reason);

    pid_t pid = 0;
    const auto argv = arguments.pointers();
    const auto envp = variables.pointers();
    const int reason = posix_spawn(&pid, argv.front(), actions.get(), Attributes().get(), argv.data(), envp.data());
    if (reason != 0) return std::unexpected(reason);
    return Spawned{pid, std::move(output->readEnd), std::move(error->readEnd)};
}

} // namespace corvane
