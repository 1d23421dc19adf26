#include "tests/flows/mac.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QDir>
#include <QProcess>
#include <QStandardPaths>
#include <QThread>
#include <gtest/gtest.h>

#include <csignal>
#include <functional>

namespace corvane::test {

namespace {

constexpr int kPatience = 60'000; // milliseconds

/// The real program, as a person or a script starts it.
class Program {
public:
    explicit Program(const QStringList &words = {})
    {
        m_process.start(QStringLiteral(CORVANE_PROGRAM), words);
        EXPECT_TRUE(m_process.waitForStarted(kPatience));
    }
    ~Program()
    {
        m_process.kill();
        m_process.waitForFinished(kPatience);
    }

    /// Lets it end; its exit status.
    int ends()
    {
        EXPECT_TRUE(m_process.waitForFinished(kPatience));
        m_out = m_process.readAllStandardOutput();
        m_err = m_process.readAllStandardError();
        EXPECT_EQ(m_process.exitStatus(), QProcess::NormalExit) << m_err.constData();
        return m_process.exitCode();
    }
    [[nodiscard]] bool runs() { return !m_process.waitForFinished(0) && m_process.state() == QProcess::Running; }
    [[nodiscard]] std::string out() const { return m_out.toStdString(); }
    [[nodiscard]] std::string err() const { return m_err.toStdString(); }
    [[nodiscard]] QByteArray saysInTime()
    {
        m_process.setReadChannel(QProcess::StandardError);
        while (!m_process.canReadLine() && m_process.waitForReadyRead(kPatience)) {
        }
        return m_process.readLine().trimmed();
    }
    void send(int signal) { ::kill(pid_t(m_process.processId()), signal); }
    void kill()
    {
        m_process.kill();
        EXPECT_TRUE(m_process.waitForFinished(kPatience));
    }

private:
    QProcess m_process;
    QByteArray m_out;
    QByteArray m_err;
};

[[nodiscard]] bool eventually(const std::function<bool()> &condition)
{
    const QDeadlineTimer deadline(kPatience);
    bool happened = condition();
    while (!happened && !deadline.hasExpired()) {
        QThread::msleep(10);
        happened = condition();
    }
    return happened;
}

/// Waits until the one that was started can be spoken to, and has looked.
void waitUntilGreen()
{
    ASSERT_TRUE(eventually([] { return Program({QStringLiteral("status")}).ends() == 0; }));
}

class SecondStart : public testing::Test {
protected:
    SecondStart() { Mac::reset(QStringLiteral("protected")); }
};

constexpr int kNoAnswer = 6;
const char *const kSilent = "Corvane is running, but does not answer. End it in Activity Monitor, then open it again.";

TEST_F(SecondStart, Brings_the_first_to_the_front_and_ends)
{
    Program first;
    waitUntilGreen();
    Program second;
    EXPECT_EQ(second.ends(), 0);
    EXPECT_EQ(second.err(), "");
    EXPECT_TRUE(first.runs());
}

TEST_F(SecondStart, Of_two_starts_at_once_one_stays)
{
    Program one;
    Program other;
    waitUntilGreen();
    EXPECT_TRUE(eventually([&] { return one.runs() != other.runs(); }));
    waitUntilGreen();
    EXPECT_NE(one.runs(), other.runs());
}

TEST_F(SecondStart, After_a_kill_is_the_first)
{
    {
        Program first;
        waitUntilGreen();
        first.kill();
    }
    Program asking({QStringLiteral("status")});
    EXPECT_EQ(asking.ends(), 5);
    EXPECT_EQ(asking.out(), "Corvane is not running.\n");
    Program second;
    waitUntilGreen();
    EXPECT_TRUE(second.runs());
}

TEST_F(SecondStart, Beside_one_that_hangs_says_so)
{
    Program first;
    waitUntilGreen();
    first.send(SIGSTOP);
    Program second;
    EXPECT_EQ(second.saysInTime(), kSilent);
    Program asking({QStringLiteral("status")});
    EXPECT_EQ(asking.ends(), kNoAnswer);
    EXPECT_EQ(asking.err(), std::string(kSilent) + "\n");
    first.send(SIGCONT);
    Program third;
    EXPECT_EQ(third.ends(), 0) << "it answers again";
}

TEST_F(SecondStart, Commands_are_carried_out_by_the_first)
{
    Program first;
    waitUntilGreen();
    Program pause({QStringLiteral("pause"), QStringLiteral("1h")});
    EXPECT_EQ(pause.ends(), 0) << pause.err();
    EXPECT_EQ(pause.out(), "Blocking is paused for 1 hour.\n");
    Program resume({QStringLiteral("resume")});
    EXPECT_EQ(resume.ends(), 0) << resume.err();
    Program wrong({QStringLiteral("dance")});
    EXPECT_EQ(wrong.ends(), 64);
    Program version({QStringLiteral("--version")});
    EXPECT_EQ(version.ends(), 0);
    EXPECT_TRUE(version.out().starts_with("Corvane "));
}

} // namespace

} // namespace corvane::test
