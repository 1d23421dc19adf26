// A program with named behaviours, for the tests that run real children: corvane_test_child <behaviour> [arguments]

#include <dirent.h>
#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <map>
#include <string>
#include <thread>
#include <utility>
#include <vector>

extern char **environ;

namespace {

using Arguments = std::vector<std::string>;

void writeAll(int descriptor, const std::string &text)
{
    for (size_t done = 0; done < text.size();) {
        const ssize_t count = write(descriptor, text.data() + done, text.size() - done);
        if (count < 0 && errno != EINTR) _exit(90);
        done += count > 0 ? static_cast<size_t>(count) : 0;
    }
}

void pauseFor(const std::string &seconds)
{
    std::this_thread::sleep_for(std::chrono::duration<double>(std::stod(seconds)));
}

std::string fromHex(const std::string &hex)
{
    std::string bytes;
    for (size_t i = 0; i + 1 < hex.size(); i += 2) {
        bytes += static_cast<char>(std::stoi(hex.substr(i, 2), nullptr, 16));
    }
    return bytes;
}

std::string toHex(const std::string &bytes)
{
    std::string hex;
    char digits[3];
    for (const unsigned char byte : bytes) {
        std::snprintf(digits, sizeof digits, "%02x", byte);
        hex += digits;
    }
    return hex;
}

// print OUT ERR: writes the two texts, given in hex, to the two streams.
int print(const Arguments &arguments)
{
    writeAll(STDOUT_FILENO, fromHex(arguments.at(0)));
    writeAll(STDERR_FILENO, fromHex(arguments.at(1)));
    return 0;
}

int exitWith(const Arguments &arguments) { return std::stoi(arguments.at(0)); }

// flood MIB: that many MiB to each stream, in turns.
int flood(const Arguments &arguments)
{
    std::string block(1024 * 1024, 'x');
    for (size_t i = 63; i < block.size(); i += 64)
        block[i] = '\n';
    for (int i = std::stoi(arguments.at(0)); i > 0; --i) {
        writeAll(STDOUT_FILENO, block);
        writeAll(STDERR_FILENO, block);
    }
    return 0;
}

// sleep SECONDS [TEXT]: prints the text first.
int sleepFor(const Arguments &arguments)
{
    if (arguments.size() > 1) writeAll(STDOUT_FILENO, arguments[1]);
    pauseFor(arguments.at(0));
    return 0;
}

// sleep-told SECONDS: prints "pid" and its process number first.
int sleepTold(const Arguments &arguments)
{
    writeAll(STDOUT_FILENO, "pid " + std::to_string(getpid()) + "\n");
    pauseFor(arguments.at(0));
    return 0;
}

// ignore-term SECONDS: SIGTERM does nothing; prints "ready" once that is so, then its process number.
int ignoreTerm(const Arguments &arguments)
{
    signal(SIGTERM, SIG_IGN);
    writeAll(STDOUT_FILENO, "ready " + std::to_string(getpid()) + "\n");
    pauseFor(arguments.at(0));
    return 0;
}

// tidy-term STATUS: ends with that status when told to terminate.
int tidyTerm(const Arguments &arguments)
{
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGTERM);
    sigprocmask(SIG_BLOCK, &signals, nullptr);
    writeAll(STDOUT_FILENO, "ready\n");
    int received = 0;
    sigwait(&signals, &received);
    return std::stoi(arguments.at(0));
}

// last-words BYTES STATUS: says so much on both streams when told to terminate, then ends with that status.
int lastWords(const Arguments &arguments)
{
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGTERM);
    sigprocmask(SIG_BLOCK, &signals, nullptr);
    int received = 0;
    sigwait(&signals, &received);
    const std::string words(std::stoul(arguments.at(0)), 'w');
    writeAll(STDOUT_FILENO, words);
    writeAll(STDERR_FILENO, words);
    return std::stoi(arguments.at(1));
}

// both-streams COUNT: numbers, the even ones on standard output, the odd ones on standard error.
int bothStreams(const Arguments &arguments)
{
    for (int i = 0; i < std::stoi(arguments.at(0)); ++i)
        writeAll(i % 2 == 0 ? STDOUT_FILENO : STDERR_FILENO, std::to_string(i) + "\n");
    return 0;
}

int die(const Arguments &arguments)
{
    raise(std::stoi(arguments.at(0)));
    return 91;
}

// close-streams SECONDS STATUS: prints, closes both streams and lives on.
int closeStreams(const Arguments &arguments)
{
    writeAll(STDOUT_FILENO, "before");
    close(STDOUT_FILENO);
    close(STDERR_FILENO);
    pauseFor(arguments.at(0));
    return std::stoi(arguments.at(1));
}

// grandchild SECONDS: leaves a process behind that keeps both streams open, silent.
int grandchild(const Arguments &arguments)
{
    if (fork() == 0) {
        pauseFor(arguments.at(0));
        _exit(0);
    }
    writeAll(STDOUT_FILENO, "parent\n");
    return 0;
}

// noisy-grandchild: leaves a process behind that writes until nobody reads.
int noisyGrandchild(const Arguments &)
{
    const std::string block(4096, 'g');
    if (fork() == 0) {
        for (;;)
            writeAll(STDOUT_FILENO, block);
    }
    pauseFor("0.1");
    return 0;
}

// args ...: each argument in hex, one a line.
int args(const Arguments &arguments)
{
    for (const std::string &argument : arguments)
        writeAll(STDOUT_FILENO, toHex(argument) + "\n");
    return 0;
}

// env PREFIX: how many variables begin with the prefix.
int countEnvironment(const Arguments &arguments)
{
    const std::string &prefix = arguments.at(0);
    int count = 0;
    for (char **variable = environ; *variable; ++variable)
        count += std::string(*variable).starts_with(prefix) ? 1 : 0;
    writeAll(STDOUT_FILENO, std::to_string(count));
    return 0;
}

int getEnvironment(const Arguments &arguments)
{
    const char *value = getenv(arguments.at(0).c_str());
    writeAll(STDOUT_FILENO, value ? value : "(unset)");
    return 0;
}

int readInput(const Arguments &)
{
    char byte = 0;
    const ssize_t count = read(STDIN_FILENO, &byte, 1);
    writeAll(STDOUT_FILENO, count == 0 ? "end of file" : "something else");
    return 0;
}

// line MIB: one line of that many MiB, without an end.
int line(const Arguments &arguments)
{
    const std::string block(1024 * 1024, 'l');
    for (int i = std::stoi(arguments.at(0)); i > 0; --i)
        writeAll(STDOUT_FILENO, block);
    return 0;
}

int lines(const Arguments &arguments)
{
    std::string block;
    for (int i = 0; i < std::stoi(arguments.at(0)); ++i) {
        block += std::to_string(i) + "\n";
        if (block.size() > 32 * 1024) writeAll(STDOUT_FILENO, std::exchange(block, {}));
    }
    writeAll(STDOUT_FILENO, block);
    return 0;
}

// chunks SECONDS HEX...: each chunk after a pause.
int chunks(const Arguments &arguments)
{
    for (size_t i = 1; i < arguments.size(); ++i) {
        writeAll(STDOUT_FILENO, fromHex(arguments[i]));
        pauseFor(arguments[0]);
    }
    return 0;
}

// streams N: N lines on each stream by turns, slowly enough that each is read before the next comes.
int streams(const Arguments &arguments)
{
    for (int i = 0; i < std::stoi(arguments.at(0)); ++i) {
        writeAll(STDOUT_FILENO, "out " + std::to_string(i) + "\n");
        pauseFor("0.01");
        writeAll(STDERR_FILENO, "err " + std::to_string(i) + "\n");
        pauseFor("0.01");
    }
    return 0;
}

// descriptors: the numbers of its open descriptors.
int descriptors(const Arguments &)
{
    std::string found;
    for (int i = 0; i < 1024; ++i) {
        if (fcntl(i, F_GETFD) >= 0) found += std::to_string(i) + " ";
    }
    writeAll(STDOUT_FILENO, found);
    return 0;
}

// signals: which of a few signals it was started with blocked or ignored.
int signals(const Arguments &)
{
    sigset_t blocked;
    sigprocmask(SIG_BLOCK, nullptr, &blocked);
    for (const int number : {SIGPIPE, SIGTERM, SIGUSR1, SIGCHLD}) {
        struct sigaction action = {};
        sigaction(number, nullptr, &action);
        if (sigismember(&blocked, number)) writeAll(STDOUT_FILENO, "blocked " + std::to_string(number) + "\n");
        if (action.sa_handler == SIG_IGN) writeAll(STDOUT_FILENO, "ignored " + std::to_string(number) + "\n");
    }
    return 0;
}

const std::map<std::string, std::function<int(const Arguments &)>> kBehaviours{
    {"print", print},
    {"exit", exitWith},
    {"flood", flood},
    {"sleep", sleepFor},
    {"sleep-told", sleepTold},
    {"ignore-term", ignoreTerm},
    {"tidy-term", tidyTerm},
    {"last-words", lastWords},
    {"both-streams", bothStreams},
    {"die", die},
    {"close-streams", closeStreams},
    {"grandchild", grandchild},
    {"noisy-grandchild", noisyGrandchild},
    {"args", args},
    {"env", countEnvironment},
    {"getenv", getEnvironment},
    {"read-input", readInput},
    {"line", line},
    {"lines", lines},
    {"chunks", chunks},
    {"streams", streams},
    {"descriptors", descriptors},
    {"signals", signals},
};

} // namespace

int main(int argc, char **argv)
{
    const auto behaviour = argc > 1 ? kBehaviours.find(argv[1]) : kBehaviours.end();
    if (behaviour == kBehaviours.end()) {
        std::fprintf(stderr, "corvane_test_child: no such behaviour\n");
        return 99;
    }
    return behaviour->second(Arguments(argv + 2, argv + argc));
}
