#include "tests/faults/sweep.h"

#include <random>

namespace corvane::test {

namespace {

/// How a command goes wrong. A hang costs the command's whole time limit, so it has a sweep of its own.
const QStringList &kinds()
{
    static const QStringList all{
        QStringLiteral("fail"),     QStringLiteral("rubbish"), QStringLiteral("vanish"),
        QStringLiteral("die SEGV"), QStringLiteral("fail 0"), // done, it says, and prints nothing
        QStringLiteral("flood 1")};
    return all;
}

/// How many pairs to try in one part, by the environment.
int pairs()
{
    const int asked = qEnvironmentVariableIntValue("CORVANE_PAIRS");
    return asked > 0 ? asked : 60;
}

/// One scene by itself.
class SweepOfOne : public Sweep, public testing::WithParamInterface<int> {};

/// A part of the pairs, with dice of its own.
class SweepOfPairs : public Sweep, public testing::WithParamInterface<int> {};
constexpr int kParts = 4;

} // namespace

TEST_F(Sweep, A_sample_of_mishaps_ends_in_a_sentence_and_leaves_a_way_back)
{
    int turn = 0;
    for (const Scene &scene : scenes()) {
        const QList<Mishap> calls = callsOf(scene);
        ASSERT_FALSE(calls.isEmpty() && !scene.isAnAction) << scene.name;
        const qsizetype stride = std::max<qsizetype>(1, calls.size() / (scene.isAnAction ? 2 : 5));
        for (qsizetype i = 0; i < calls.size(); i += stride) {
            Mishap mishap = calls[i];
            mishap.kind = kinds()[turn++ % kinds().size()];
            endure(scene, {mishap});
        }
    }
    EXPECT_GE(m_endured, 25);
}

TEST_P(SweepOfPairs, Any_two_commands_go_wrong_and_it_works_when_that_is_over)
{
    m_comesAndGoes = true;
    QList<QList<Mishap>> calls;
    for (const Scene &scene : scenes())
        calls += callsOf(scene);
    std::mt19937 dice(20261122 + GetParam());
    const auto anyOf = [&dice](qsizetype count) {
        return static_cast<qsizetype>(dice() % static_cast<quint32>(count));
    };
    while (m_endured < pairs()) {
        const qsizetype place = anyOf(scenes().size());
        if (calls[place].size() < 2) continue;
        Mishap one = calls[place][anyOf(calls[place].size())];
        Mishap other = calls[place][anyOf(calls[place].size())];
        one.kind = kinds()[anyOf(kinds().size())];
        other.kind = kinds()[anyOf(kinds().size())];
        endure(scenes()[place], {one, other});
    }
    std::printf("%d pairs, %d tried again\n", m_endured, m_triedAgain);
}

TEST_P(SweepOfOne, Every_command_fails_once_and_it_works_when_that_is_over)
{
    m_comesAndGoes = true;
    const Scene &scene = scenes()[GetParam()];
    const QList<Mishap> calls = callsOf(scene);
    for (Mishap mishap : calls) {
        mishap.kind = QStringLiteral("fail");
        endure(scene, {mishap});
    }
    std::printf("%s: %d failures, %d tried again\n", scene.name, m_endured, m_triedAgain);
}

TEST_P(SweepOfOne, Every_command_goes_wrong_in_every_way)
{
    const Scene &scene = scenes()[GetParam()];
    const QList<Mishap> calls = callsOf(scene);
    for (Mishap mishap : calls) {
        for (const QString &kind : kinds()) {
            mishap.kind = kind;
            endure(scene, {mishap});
        }
    }
    std::printf("%s: %d mishaps\n", scene.name, m_endured);
}

TEST_F(Sweep, Every_tool_is_missed_by_a_look_before_the_action)
{
    m_looksFirst = true;
    for (const Scene &scene : scenes()) {
        QSet<QString> tools;
        for (const Mishap &call : callsOf(scene))
            tools += call.tool;
        for (const QString &tool : QStringList(tools.begin(), tools.end()))
            endure(scene, {{tool, QStringLiteral("vanish")}});
    }
    std::printf("%d tools gone\n", m_endured);
}

TEST_P(SweepOfOne, Every_command_hangs_once)
{
    const Scene &scene = scenes()[GetParam()];
    const QList<Mishap> calls = callsOf(scene);
    for (Mishap mishap : calls) {
        mishap.kind = QStringLiteral("hang");
        endure(scene, {mishap});
    }
    std::printf("%s: %d hangs\n", scene.name, m_endured);
}

TEST_F(Sweep, A_prompt_left_alone_for_three_minutes_is_told_and_nothing_is_changed)
{
    const Scene &pointing = scenes()[3];
    begin(pointing);
    Mac::ctl(QStringLiteral("prompt hang"));
    pointing.play(model());
    EXPECT_TEXT(model().dnsMessage(), "The administrator prompt timed out.");
    EXPECT_EQ(serversNow(), QStringList{QStringLiteral("9.9.9.9")});
    EXPECT_EQ(firstChange(), 0);
    EXPECT_TRUE(quiet());
}

INSTANTIATE_TEST_SUITE_P(Parts, SweepOfPairs, testing::Range(0, kParts));
INSTANTIATE_TEST_SUITE_P(
    Scenes, SweepOfOne, testing::Range(0, static_cast<int>(scenes().size())),
    [](const testing::TestParamInfo<int> &each) {
        return QString::fromLatin1(scenes()[each.param].name).replace(u' ', u'_').remove(u'-').toStdString();
    });

} // namespace corvane::test
