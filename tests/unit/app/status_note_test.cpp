#include "app/status_note.h"

#include <gtest/gtest.h>

namespace corvane::test {

namespace {

StatusFacts checked(const ContainerState &container = ContainerState::running(QStringLiteral("healthy")))
{
    StatusFacts facts;
    facts.checked = true;
    facts.container = container;
    return facts;
}

std::string noteOn(const StatusFacts &facts) { return statusNote(facts).toStdString(); }

} // namespace

TEST(StatusNote, Is_empty_when_all_is_well_or_nothing_is_known)
{
    EXPECT_EQ(noteOn(checked()), "");
    StatusFacts facts;
    facts.trouble = DnsTrouble::Silent;
    EXPECT_EQ(noteOn(facts), "") << "nothing was checked yet";
}

TEST(StatusNote, Starting_comes_before_all_else)
{
    StatusFacts facts = checked();
    facts.starting = true;
    facts.trouble = DnsTrouble::Silent;
    EXPECT_EQ(noteOn(facts), "Pi-hole is starting. It answers in a moment.");
}

TEST(StatusNote, Silence_says_more_only_when_the_container_runs)
{
    StatusFacts facts = checked(ContainerState::stopped(QStringLiteral("exited")));
    facts.trouble = DnsTrouble::Silent;
    EXPECT_EQ(noteOn(facts), "");
    facts.container = ContainerState::running(QStringLiteral("unhealthy"));
    EXPECT_EQ(noteOn(facts), "Its container runs, but Pi-hole does not answer.");
    facts.container = ContainerState::running(QStringLiteral("starting"));
    EXPECT_EQ(noteOn(facts), "Its container runs and is still starting. Pi-hole does not answer yet.");
}

TEST(StatusNote, Every_trouble_has_a_sentence)
{
    for (const DnsTrouble trouble : {DnsTrouble::NothingBehind, DnsTrouble::OldAnswers, DnsTrouble::TooManyQuestions,
                                     DnsTrouble::NameWithheld, DnsTrouble::OtherServer}) {
        StatusFacts facts = checked();
        facts.trouble = trouble;
        EXPECT_EQ(statusNote(facts), sentence(trouble));
        EXPECT_TRUE(sentence(trouble).endsWith(u'.'));
    }
}

TEST(StatusNote, An_engine_that_cannot_be_used_is_told_while_it_cannot)
{
    StatusFacts facts = checked(ContainerState::dockerDown());
    facts.engineProblem = QStringLiteral("Docker's client is too old.");
    facts.trouble = DnsTrouble::Silent;
    EXPECT_EQ(noteOn(facts), "Docker's client is too old.");
    facts.container = ContainerState::running(QStringLiteral("healthy"));
    facts.trouble = DnsTrouble::None;
    EXPECT_EQ(noteOn(facts), "");
}

TEST(StatusNote, What_keeps_an_answering_pihole_from_blocking_is_told)
{
    StatusFacts facts = checked();
    facts.blocking = PiholeBlocking{false, std::nullopt};
    EXPECT_EQ(noteOn(facts), "Blocking is off until you resume it.");
    facts.blocking = PiholeBlocking{false, 299.9};
    EXPECT_EQ(noteOn(facts), "") << "a pause ends by itself";
    facts.summary = PiholeSummary{10, 0, 0, 0};
    EXPECT_EQ(noteOn(facts), "Pi-hole has no block lists, so it blocks nothing.");
}

TEST(StatusNote, Whoever_takes_the_lookups_is_told_last)
{
    StatusFacts facts = checked();
    facts.detour = QStringLiteral("A VPN is in front.");
    EXPECT_EQ(noteOn(facts), "A VPN is in front.");
    facts.blocking = PiholeBlocking{false, std::nullopt};
    EXPECT_EQ(noteOn(facts), "Blocking is off until you resume it.");
}

TEST(NoLists, Are_none_or_a_negative_number_of_names)
{
    EXPECT_TRUE(hasNoLists(PiholeSummary{1, 0, 0, 0}));
    EXPECT_TRUE(hasNoLists(PiholeSummary{1, 0, 0, -2}));
    EXPECT_FALSE(hasNoLists(PiholeSummary{1, 0, 0, 1}));
    EXPECT_FALSE(hasNoLists(PiholeSummary{1, 0, 0}));
    EXPECT_FALSE(hasNoLists(std::nullopt));
}

} // namespace corvane::test
