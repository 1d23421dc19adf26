#include "tests/io/api/api_fixture.h"
#include "tests/io/api/stand_in.h"

#include <QEventLoop>
#include <QTimer>

using namespace corvane;
using namespace corvane::test;
using namespace Qt::StringLiterals;

namespace {

const QString kPassword = QStringLiteral("secret");

/// A client of a stand-in, configured.
std::unique_ptr<PiholeAPI> clientOf(const StandIn &pihole, const QString &password = kPassword)
{
    auto api = std::make_unique<PiholeAPI>();
    api->configure(pihole.webPort(), password);
    return api;
}

void pass(std::chrono::milliseconds time)
{
    QEventLoop loop;
    QTimer::singleShot(time, &loop, &QEventLoop::quit);
    loop.exec();
}

} // namespace

TEST(PiholeStandIn, The_admin_page_answers_by_pointing_elsewhere)
{
    const StandIn pihole;
    EXPECT_TRUE(QCoro::waitFor(clientOf(pihole)->webAnswers()));
}

TEST(PiholeStandIn, Its_counters_count_what_was_looked_up)
{
    const StandIn pihole(kPassword, {{u"log_delay"_s, 0}});
    const auto api = clientOf(pihole);
    const auto before = QCoro::waitFor(api->summary());
    ASSERT_TRUE(before);
    EXPECT_EQ(pihole.lookUp(u"doubleclick.net"_s), u"0.0.0.0"_s);
    EXPECT_NE(pihole.lookUp(u"example.com"_s), QString());
    const auto after = QCoro::waitFor(api->summary());
    ASSERT_TRUE(after);
    EXPECT_EQ(after->total, before->total + 2);
    EXPECT_EQ(after->blocked, before->blocked + 1);
    EXPECT_GT(after->percentBlocked, 0);
}

TEST(PiholeStandIn, Its_log_gives_the_newest_lookups_first)
{
    const StandIn pihole(kPassword, {{u"log_delay"_s, 0}});
    const auto api = clientOf(pihole);
    EXPECT_NE(pihole.lookUp(u"example.com"_s), QString());
    EXPECT_NE(pihole.lookUp(u"DoubleClick.NET"_s), QString());
    const auto queries = QCoro::waitFor(api->recentQueries(2));
    ASSERT_TRUE(queries);
    ASSERT_EQ(queries->size(), 2);
    EXPECT_EQ(queries->at(0).domain, u"doubleclick.net"_s);
    EXPECT_EQ(queries->at(0).status, u"GRAVITY"_s);
    EXPECT_EQ(queries->at(1).domain, u"example.com"_s);
    EXPECT_EQ(QCoro::waitFor(api->recentQueries(0))->size(), 0);
}

TEST(PiholeStandIn, A_pause_runs_down_and_a_resume_ends_it)
{
    const StandIn pihole;
    const auto api = clientOf(pihole);
    EXPECT_EQ(*QCoro::waitFor(api->blocking()), (PiholeBlocking{true, std::nullopt}));
    const auto paused = QCoro::waitFor(api->setBlocking(false, 300));
    ASSERT_TRUE(paused);
    EXPECT_FALSE(paused->enabled);
    EXPECT_EQ(paused->timerSeconds, 300.0);
    EXPECT_NE(pihole.lookUp(u"doubleclick.net"_s), u"0.0.0.0"_s);
    pass(std::chrono::milliseconds(250));
    EXPECT_LT(QCoro::waitFor(api->blocking())->timerSeconds.value(), 300.0);
    EXPECT_EQ(*QCoro::waitFor(api->setBlocking(true, std::nullopt)), (PiholeBlocking{true, std::nullopt}));
    EXPECT_EQ(pihole.lookUp(u"doubleclick.net"_s), u"0.0.0.0"_s);
}

TEST(PiholeStandIn, A_pause_without_a_timer_stays)
{
    const StandIn pihole;
    const auto api = clientOf(pihole);
    EXPECT_EQ(*QCoro::waitFor(api->setBlocking(false, std::nullopt)), (PiholeBlocking{false, std::nullopt}));
}

TEST(PiholeStandIn, A_wrong_password_is_refused)
{
    const StandIn pihole;
    EXPECT_EQ(errorOf(QCoro::waitFor(clientOf(pihole, u"wrong"_s)->summary())), PiholeAPIError::unauthorized());
    EXPECT_EQ(errorOf(QCoro::waitFor(clientOf(pihole, QString())->summary())), PiholeAPIError::unauthorized());
}

TEST(PiholeStandIn, A_wrong_password_is_refused_even_after_a_right_one)
{
    const StandIn pihole;
    const auto api = clientOf(pihole);
    ASSERT_TRUE(QCoro::waitFor(api->summary()));
    api->configure(pihole.webPort(), u"wrong"_s);
    EXPECT_EQ(errorOf(QCoro::waitFor(api->summary())), PiholeAPIError::unauthorized());
}

TEST(PiholeStandIn, Without_a_password_there_is_no_session_to_win)
{
    const StandIn pihole{QString()};
    EXPECT_EQ(errorOf(QCoro::waitFor(clientOf(pihole)->summary())), PiholeAPIError::unauthorized());
}

TEST(PiholeStandIn, Too_many_logins_in_one_second_end_in_429)
{
    const StandIn pihole(kPassword, {{u"login_limit"_s, 0}});
    EXPECT_EQ(errorOf(QCoro::waitFor(clientOf(pihole)->summary())), PiholeAPIError::http(429));
}

TEST(PiholeStandIn, Twenty_calls_hold_one_seat)
{
    const StandIn pihole(kPassword, {{u"seats"_s, 1}});
    const auto api = clientOf(pihole);
    for (int call = 0; call < 20; ++call)
        EXPECT_TRUE(QCoro::waitFor(api->blocking())) << call;
    EXPECT_EQ(errorOf(QCoro::waitFor(clientOf(pihole)->blocking())), PiholeAPIError::http(429));
    EXPECT_TRUE(QCoro::waitFor(api->blocking()));
}

TEST(PiholeStandIn, An_expired_session_is_renewed)
{
    StandIn pihole;
    const auto api = clientOf(pihole);
    ASSERT_TRUE(QCoro::waitFor(api->blocking()));
    pihole.direct({{u"do"_s, u"advance"_s}, {u"seconds"_s, 1900}});
    ASSERT_TRUE(QCoro::waitFor(clientOf(pihole)->blocking()));
    EXPECT_TRUE(QCoro::waitFor(api->blocking()));
}

TEST(PiholeStandIn, A_crash_costs_nothing_but_a_login)
{
    StandIn pihole;
    const auto api = clientOf(pihole);
    ASSERT_TRUE(QCoro::waitFor(api->blocking()));
    pihole.end(true);
    EXPECT_EQ(errorOf(QCoro::waitFor(api->blocking())), PiholeAPIError::unreachable());
    EXPECT_FALSE(QCoro::waitFor(api->webAnswers()));
    pihole.start();
    EXPECT_TRUE(QCoro::waitFor(api->blocking()));
}

TEST(PiholeStandIn, A_seat_survives_a_clean_restart)
{
    StandIn pihole(kPassword, {{u"seats"_s, 1}});
    const auto api = clientOf(pihole);
    ASSERT_TRUE(QCoro::waitFor(api->blocking()));
    pihole.end();
    pihole.start();
    EXPECT_TRUE(QCoro::waitFor(api->blocking()));
}

TEST(PiholeStandIn, A_connection_idle_for_longer_than_it_keeps_one_does_no_harm)
{
    const StandIn pihole;
    const auto api = clientOf(pihole);
    ASSERT_TRUE(QCoro::waitFor(api->blocking()));
    pass(std::chrono::milliseconds(5300));
    EXPECT_TRUE(QCoro::waitFor(api->blocking()));
}

TEST(PiholeStandIn, An_archive_it_gave_is_taken_back)
{
    const StandIn pihole;
    const auto api = clientOf(pihole);
    const auto archive = QCoro::waitFor(api->teleporterDownload());
    ASSERT_TRUE(archive);
    EXPECT_TRUE(archive->bytes.startsWith("PK\x03\x04"));
    EXPECT_TRUE(QCoro::waitFor(api->teleporterUpload(archive->bytes, u"Grö\"ße \r\n.zip"_s)));
}

TEST(PiholeStandIn, What_is_no_archive_is_refused)
{
    const StandIn pihole;
    const auto api = clientOf(pihole);
    EXPECT_EQ(errorOf(QCoro::waitFor(api->teleporterUpload("rubbish", u"x.zip"_s))), PiholeAPIError::http(400));
    EXPECT_EQ(errorOf(QCoro::waitFor(api->teleporterUpload({}, u"x.zip"_s))), PiholeAPIError::http(400));
    const auto archive = QCoro::waitFor(api->teleporterDownload());
    ASSERT_TRUE(archive);
    EXPECT_EQ(errorOf(QCoro::waitFor(api->teleporterUpload(archive->bytes, u"x.txt"_s))), PiholeAPIError::http(400));
}

TEST(PiholeStandIn, A_web_server_that_hangs_is_given_up)
{
    StandIn pihole;
    pihole.direct({{u"do"_s, u"set"_s}, {u"name"_s, u"web"_s}, {u"value"_s, u"hang"_s}});
    PiholeAPI api(shortLimits());
    api.configure(pihole.webPort(), kPassword);
    EXPECT_EQ(errorOf(QCoro::waitFor(api.summary())), PiholeAPIError::unreachable());
    EXPECT_FALSE(QCoro::waitFor(api.webAnswers()));
}
