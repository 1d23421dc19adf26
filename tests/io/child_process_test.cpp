// One child at a time, read by hand.

#include "exec/child_process.h"
#include "tests/io/test_child.h"

#include <gtest/gtest.h>

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>

namespace corvane::test {

using namespace Qt::Literals::StringLiterals;

namespace {

// A careless parent may have left it so: the system then throws exit statuses away.
[[maybe_unused]] const auto kBefore = signal(SIGCHLD, SIG_IGN);

ChildProcess::ReadSome into(QByteArray &text)
{
    return [&text](int from) {
        std::array<char, 256> some{};
        const ssize_t count = read(from, some.data(), some.size());
        if (count > 0) text.append(some.data(), count);
        return count;
    };
}

std::shared_ptr<ChildProcess> started(const QStringList &args)
{
    return ChildProcess::start(Command(childPath(), args), ChildProcess::era()).value();
}

/// Until a child has ended, without taking its status.
void waitForAnEnd()
{
    siginfo_t told{};
    ASSERT_EQ(waitid(P_ALL, 0, &told, WEXITED | WNOWAIT), 0);
}

} // namespace

TEST(ChildProcess, The_exit_status_is_kept_although_ended_children_were_ignored)
{
    const auto child = started({u"exit"_s, u"42"_s});
    QByteArray text;
    EXPECT_TRUE(child->readUntilEnd(into(text), into(text), ChildProcess::Clock::time_point::max()));
    EXPECT_EQ(child->status(), 42);
}

TEST(ChildProcess, What_it_left_in_both_streams_is_read_after_its_end)
{
    const QByteArray output(1000, 'o');
    const QByteArray error(1000, 'e');
    const auto child = started({u"print"_s, hex(output), hex(error)});
    waitForAnEnd();
    QByteArray outputRead;
    QByteArray errorRead;
    EXPECT_TRUE(child->readUntilEnd(into(outputRead), into(errorRead), ChildProcess::Clock::time_point::max()));
    EXPECT_EQ(outputRead, output);
    EXPECT_EQ(errorRead, error);
}

} // namespace corvane::test
