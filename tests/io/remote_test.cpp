#include "exec/app_paths.h"
#include "exec/background.h"
#include "remote/caller.h"
#include "remote/exit_status.h"
#include "remote/instance.h"
#include "remote/listener.h"
#include "remote/local_address.h"
#include "tests/support/home_folder.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTest>
#include <gtest/gtest.h>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <random>
#include <thread>

namespace corvane::remote {
namespace {

using Kind = Request::Kind;
using Told = std::expected<Answer, Silence>;

constexpr int kPatience = 20'000; // milliseconds

/// A process of its own that does something and then waits to be killed.
class Other {
public:
    template <class Action>
    explicit Other(Action action)
    {
        std::array<int, 2> ready{};
        if (::pipe(ready.data()) != 0) std::abort();
        m_process = ::fork();
        if (m_process == 0) {
            action();
            if (::write(ready[1], "r", 1) != 1) ::_exit(1);
            for (;;)
                ::pause();
        }
        ::close(ready[1]);
        char byte = 0;
        EXPECT_EQ(::read(ready[0], &byte, 1), 1);
        ::close(ready[0]);
    }
    ~Other() { kill(); }

    void kill()
    {
        if (m_process <= 0) return;
        ::kill(m_process, SIGKILL);
        ::waitpid(m_process, nullptr, 0);
        m_process = 0;
    }
    [[nodiscard]] pid_t process() const { return m_process; }

private:
    pid_t m_process = 0;
};

/// A connection that keeps to no rule.
FileDescriptor connection()
{
    const auto address = LocalAddress::ofCorvane();
    FileDescriptor socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    // A queue that is full empties as this thread goes on.
    EXPECT_TRUE(QTest::qWaitFor([&] { return ::connect(socket.number(), address->pointer(), address->size()) == 0; },
                                kPatience));
    return socket;
}

bool isClosedByOther(const FileDescriptor &socket)
{
    char buffer[256];
    return ::recv(socket.number(), buffer, sizeof buffer, MSG_DONTWAIT) == 0 || errno == ECONNRESET;
}

/// Listens, stays silent, and claims to be Corvane; answers with its socket.
int beSilent(Instance &instance)
{
    instance.claim();
    const auto address = LocalAddress::ofCorvane();
    const int socket = ::socket(AF_UNIX, SOCK_STREAM, 0);
    ::unlink(address->path());
    if (::bind(socket, address->pointer(), address->size()) != 0 || ::listen(socket, 1) != 0) ::_exit(1);
    return socket;
}

class Remote : public testing::Test {
protected:
    Remote()
        : m_listener([this](const Request &request, Conversation *asker) {
            m_heard += request;
            if (m_answers) asker->end(statusAnswer());
        })
    {}

    static Answer statusAnswer()
    {
        return {2, QStringLiteral("Red"), {{QStringLiteral("dot"), QStringLiteral("red")}}};
    }

    /// Asks from a thread of its own, while this one answers.
    Told asked(const Request &request, Patience patience = {})
    {
        std::optional<Told> told;
        std::thread thread([&] {
            told = ask(request, patience, [this](const QString &text) { m_begun += text; });
            postToMainThread([this] { m_asked = true; });
        });
        m_asked = false;
        EXPECT_TRUE(QTest::qWaitFor([this] { return m_asked; }, kPatience));
        thread.join();
        return *told;
    }

    test::HomeFolder m_home;
    QList<Request> m_heard;
    QStringList m_begun;
    bool m_answers = true;
    bool m_asked = false;
    Listener m_listener;
};

TEST_F(Remote, What_is_asked_is_heard_and_answered)
{
    ASSERT_TRUE(m_listener.open());
    const Request request{Kind::Pause, std::chrono::seconds(90)};
    EXPECT_EQ(asked(request), Told(statusAnswer()));
    EXPECT_EQ(m_heard, QList<Request>{request});
}

TEST_F(Remote, The_socket_is_its_users_alone)
{
    ASSERT_TRUE(m_listener.open());
    struct stat facts = {};
    ASSERT_EQ(::stat(LocalAddress::ofCorvane()->path(), &facts), 0);
    EXPECT_EQ(facts.st_mode & 07777U, 0600U);
    ASSERT_EQ(::stat(QFile::encodeName(AppPaths::runningDir().path()).constData(), &facts), 0);
    EXPECT_EQ(facts.st_mode & 07777U, 0700U);
}

TEST_F(Remote, A_folder_that_others_may_enter_is_closed_again)
{
    ASSERT_TRUE(QDir().mkpath(AppPaths::runningDir().path()));
    ASSERT_EQ(::chmod(QFile::encodeName(AppPaths::runningDir().path()).constData(), 0777), 0);
    ASSERT_TRUE(m_listener.open());
    struct stat facts = {};
    ASSERT_EQ(::stat(QFile::encodeName(AppPaths::runningDir().path()).constData(), &facts), 0);
    EXPECT_EQ(facts.st_mode & 07777U, 0700U);
}

TEST_F(Remote, Without_a_Corvane_nobody_waits)
{
    QElapsedTimer time;
    time.start();
    EXPECT_EQ(asked({Kind::Status}), Told(std::unexpected(Silence::NotRunning)));
    EXPECT_LT(time.elapsed(), Patience().hearing) << "not until patience ended";
}

TEST_F(Remote, What_a_killed_Corvane_left_behind_is_taken_over)
{
    Other killed([] {
        auto *left = new Listener([](const Request &, Conversation *) {});
        if (!left->open()) ::_exit(1);
    });
    killed.kill();
    ASSERT_TRUE(QFileInfo::exists(QFile::decodeName(LocalAddress::ofCorvane()->path()))) << "it is left behind";
    EXPECT_EQ(asked({Kind::Status}), Told(std::unexpected(Silence::NotRunning)));
    ASSERT_TRUE(m_listener.open());
    EXPECT_EQ(asked({Kind::Status}), Told(statusAnswer()));
}

TEST_F(Remote, One_that_says_nothing_is_waited_for_only_so_long)
{
    const Other silent([] { beSilent(*new Instance); });
    EXPECT_EQ(Instance::running(), silent.process());
    EXPECT_EQ(asked({Kind::Status}, {200, 200}), Told(std::unexpected(Silence::NoAnswer)));
}

TEST_F(Remote, One_that_does_not_listen_yet_is_waited_for)
{
    const Other starting([] { new Instance; });
    QTimer::singleShot(100, &m_listener, [this] { m_listener.open(); });
    EXPECT_EQ(asked({Kind::Status}, {kPatience, kPatience}), Told(statusAnswer()));
}

TEST_F(Remote, Work_that_never_ends_is_waited_for_only_so_long)
{
    ASSERT_TRUE(m_listener.open());
    Listener working([](const Request &, Conversation *asker) { asker->begin(QStringLiteral("Working")); });
    ASSERT_TRUE(working.open());
    EXPECT_EQ(asked({Kind::RestoreDns}, {kPatience, 100}), Told(std::unexpected(Silence::NoAnswer)));
    EXPECT_EQ(m_begun, QStringList{QStringLiteral("Working")});
}

TEST_F(Remote, Rubbish_is_sent_away_and_Corvane_goes_on)
{
    ASSERT_TRUE(m_listener.open());
    std::mt19937 random(3);
    for (int i = 0; i < 300; ++i) {
        QByteArray bytes;
        for (std::size_t n = random() % 300; n > 0; --n)
            bytes += static_cast<char>(random());
        const FileDescriptor socket = connection();
        // The one that is too many is sent away before a word.
        const ssize_t sent =
            ::send(socket.number(), bytes.constData(), static_cast<std::size_t>(bytes.size()), MSG_NOSIGNAL);
        EXPECT_TRUE(sent == bytes.size() || errno == EPIPE || errno == ECONNRESET) << errno;
        if (i % 3 == 0) QCoreApplication::processEvents();
    }
    EXPECT_TRUE(QTest::qWaitFor([this] { return m_listener.findChildren<Conversation *>().isEmpty(); }, kPatience));
    EXPECT_EQ(asked({Kind::Status}), Told(statusAnswer()));
    EXPECT_EQ(m_heard, QList<Request>{{Kind::Status}});
}

TEST_F(Remote, A_request_of_another_Corvane_is_told_apart)
{
    ASSERT_TRUE(m_listener.open());
    const FileDescriptor socket = connection();
    ASSERT_EQ(::send(socket.number(), "dance\n", 6, 0), 6);
    QByteArray said;
    EXPECT_TRUE(QTest::qWaitFor(
        [&] {
            char buffer[512];
            const ssize_t count = ::recv(socket.number(), buffer, sizeof buffer, MSG_DONTWAIT);
            if (count > 0) said.append(buffer, count);
            return said.contains('\n');
        },
        kPatience));
    EXPECT_EQ(decodeAnswer(said.trimmed()),
              (Answer{kWrongUse, QStringLiteral("The Corvane that runs does not know this command.")}));
    EXPECT_TRUE(m_heard.isEmpty());
}

TEST_F(Remote, Whoever_only_holds_the_line_is_sent_away)
{
    ASSERT_TRUE(m_listener.open());
    const FileDescriptor silent = connection();
    const FileDescriptor half = connection();
    ASSERT_EQ(::send(half.number(), "sta", 3, 0), 3);
    EXPECT_TRUE(QTest::qWaitFor([&] { return isClosedByOther(silent) && isClosedByOther(half); }, kPatience));
}

TEST_F(Remote, A_crowd_does_not_keep_others_out_for_long)
{
    ASSERT_TRUE(m_listener.open());
    std::vector<FileDescriptor> crowd;
    for (int i = 0; i < 60; ++i) {
        crowd.push_back(connection());
        QCoreApplication::processEvents();
    }
    EXPECT_LE(m_listener.findChildren<Conversation *>().size(), Listener::kMostConversations);
    EXPECT_TRUE(QTest::qWaitFor([this] { return m_listener.findChildren<Conversation *>().isEmpty(); }, kPatience));
    EXPECT_EQ(asked({Kind::Status}), Told(statusAnswer()));
}

TEST_F(Remote, Who_asks_and_leaves_is_forgotten)
{
    m_answers = false;
    ASSERT_TRUE(m_listener.open());
    {
        const FileDescriptor socket = connection();
        ASSERT_EQ(::send(socket.number(), "resume\n", 7, 0), 7);
        EXPECT_TRUE(QTest::qWaitFor([this] { return m_heard.size() == 1; }, kPatience));
    }
    EXPECT_TRUE(QTest::qWaitFor([this] { return m_listener.findChildren<Conversation *>().isEmpty(); }, kPatience));
}

TEST_F(Remote, An_answer_without_an_end_is_none)
{
    const Other flooding([] {
        const int socket = beSilent(*new Instance);
        std::thread([socket] {
            const int other = ::accept(socket, nullptr, nullptr);
            const std::string flood(4096, 'x');
            while (::send(other, flood.data(), flood.size(), MSG_NOSIGNAL) > 0) {
            }
        }).detach();
    });
    EXPECT_EQ(asked({Kind::Status}, {kPatience, kPatience}), Told(std::unexpected(Silence::NoAnswer)));
}

TEST_F(Remote, One_Corvane_alone_has_the_claim_and_loses_it_only_with_its_life)
{
    EXPECT_EQ(Instance::running(), std::nullopt);
    Other first([] { new Instance; });
    EXPECT_EQ(Instance::running(), first.process());
    Instance second;
    EXPECT_TRUE(second.isTaken());
    second.claim();
    EXPECT_TRUE(second.isTaken());
    first.kill();
    second.claim();
    EXPECT_FALSE(second.isTaken());
}

TEST_F(Remote, Where_no_claim_can_be_laid_Corvane_starts_all_the_same)
{
    ASSERT_TRUE(QDir().mkpath(AppPaths::runningDir().filePath(QStringLiteral("lock"))));
    EXPECT_FALSE(Instance().isTaken());
    EXPECT_EQ(Instance::running(), std::nullopt);
}

TEST_F(Remote, A_path_that_no_address_can_hold_is_refused)
{
    EXPECT_FALSE(LocalAddress::of(QString(108, u'a')));
    EXPECT_TRUE(LocalAddress::of(QString(100, u'a')));
}

} // namespace
} // namespace corvane::remote
