#include "app/comeback.h"
#include "tests/flows/memory_settings.h"

#include <QCoro/QCoroTask>
#include <gtest/gtest.h>

namespace corvane::test {

namespace {

class SetClock final : public Clock {
public:
    [[nodiscard]] Instant now() const override { return {}; }
    [[nodiscard]] QDateTime wallTime() const override { return time; }
    [[nodiscard]] QCoro::Task<> pause(Duration) override { co_return; }

    QDateTime time{QDate(2026, 11, 22), QTime(9, 11, 59)};
};

class ComebackOf : public testing::Test {
protected:
    void look(int seconds, bool answers, const ContainerState &container, bool undisturbed = true)
    {
        m_clock.time = m_clock.time.addSecs(seconds);
        m_comeback.see({0, answers, true, container, undisturbed});
    }
    void runs(int seconds) { look(seconds, true, ContainerState::running(QStringLiteral("healthy"))); }
    void goes(int seconds) { look(seconds, false, ContainerState::dockerDown()); }

    MemorySettings m_settings;
    SetClock m_clock;
    Comeback m_comeback{m_settings, m_clock};
};

} // namespace

TEST_F(ComebackOf, Nothing_is_started_before_the_user_has_chosen_it)
{
    EXPECT_FALSE(m_comeback.startsAgain());
    runs(0);
    goes(15);
    EXPECT_FALSE(m_comeback.pause());
    m_comeback.setStartsAgain(true);
    EXPECT_TRUE(m_comeback.pause());
    EXPECT_TRUE(Comeback(m_settings, m_clock).startsAgain()) << "the choice is kept";
}

TEST_F(ComebackOf, A_damaged_choice_is_none)
{
    m_settings.setValue(QStringLiteral("startsAgain"), QStringLiteral("perhaps"));
    EXPECT_FALSE(Comeback(m_settings, m_clock).startsAgain());
}

TEST_F(ComebackOf, What_the_user_has_stopped_is_not_started_until_it_has_run_again)
{
    m_comeback.setStartsAgain(true);
    runs(0);
    m_comeback.setStoppedByUser(true);
    look(1, false, ContainerState::running(QStringLiteral("healthy")), false);
    EXPECT_TRUE(m_comeback.stoppedByUser()) << "docker is still at it";
    goes(15);
    EXPECT_FALSE(m_comeback.pause());
    Comeback later(m_settings, m_clock);
    later.see({0, false, true, ContainerState::dockerDown(), true});
    EXPECT_FALSE(later.pause()) << "nor after Corvane was opened again";
    runs(15);
    EXPECT_FALSE(m_comeback.stoppedByUser());
    goes(15);
    EXPECT_TRUE(m_comeback.pause());
}

TEST_F(ComebackOf, Says_what_is_next_and_then_what_was_done)
{
    m_comeback.setStartsAgain(true);
    runs(0);
    goes(15);
    EXPECT_EQ(m_comeback.news().toStdString(), "") << "nobody waits yet";
    m_comeback.setWatched(true);
    EXPECT_EQ(m_comeback.news().toStdString(),
              "Pi-hole does not run. Corvane starts it again within 10 seconds (try 1 of 3).");
    m_comeback.beginTry();
    EXPECT_EQ(m_comeback.news().toStdString(), "Pi-hole does not run. Corvane is starting it again (try 1 of 3).");
    m_comeback.endTry(false);
    EXPECT_EQ(m_comeback.news().toStdString(),
              "Pi-hole does not run. Corvane starts it again within 30 seconds (try 2 of 3).");
    m_comeback.beginTry();
    runs(41);
    m_comeback.endTry(true);
    m_comeback.setWatched(false);
    EXPECT_EQ(m_comeback.news().toStdString(), "09:12 Started again after Colima had stopped, 41 s without Pi-hole.");
    EXPECT_EQ(Comeback(m_settings, m_clock).history(), QStringList{m_comeback.news()}) << "it is kept";
    runs(86'400);
    EXPECT_EQ(m_comeback.news().toStdString(), "") << "news is of the last day";
    EXPECT_EQ(m_comeback.history().first().toStdString(),
              "22 Nov 09:12 Started again after Colima had stopped, 41 s without Pi-hole.");
}

TEST_F(ComebackOf, What_was_about_to_happen_is_not_said_any_more_once_it_is_not)
{
    m_comeback.setStartsAgain(true);
    runs(0);
    goes(15);
    m_comeback.setWatched(true);
    EXPECT_NE(m_comeback.news().toStdString(), "");
    m_comeback.setStartsAgain(false);
    EXPECT_EQ(m_comeback.news().toStdString(), "");
    m_comeback.setStartsAgain(true);
    m_comeback.setStoppedByUser(true);
    EXPECT_EQ(m_comeback.news().toStdString(), "");
    m_comeback.setStoppedByUser(false);
    runs(5);
    EXPECT_EQ(m_comeback.news().toStdString(), "");
    EXPECT_TRUE(m_comeback.history().isEmpty());
}

TEST_F(ComebackOf, A_start_that_is_cancelled_is_recorded_only_for_those_who_chose_this)
{
    runs(0);
    goes(15);
    m_comeback.giveUp();
    EXPECT_TRUE(m_comeback.history().isEmpty());
    m_comeback.setStartsAgain(true);
    runs(15);
    goes(15);
    m_comeback.beginTry();
    m_comeback.giveUp();
    EXPECT_FALSE(m_comeback.pause());
    EXPECT_EQ(m_comeback.history().size(), 1);
}

} // namespace corvane::test
