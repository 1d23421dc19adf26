#include "dns/dns_backup.h"
#include "dns/restore_script.h"
#include "tests/faults/user_actions.h"
#include "tests/faults/waits.h"
#include "tests/flows/pihole_files.h"
#include "tests/flows/saved_files.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QFile>

#include <algorithm>
#include <random>

namespace corvane::test {

namespace {

const QString kNotNow = QStringLiteral("Not now: ");
constexpr int kSample = 15;

/// What is told of one action while it runs.
struct Course {
    explicit Course(const UserAction &which)
        : action(which)
    {}

    const UserAction &action;
    bool over = false;
    QString saidAtItsEnd;
    /// What it had said before the other one began, which takes the sentences of its own field away.
    QString saidBefore;
};

Flow<> follow(AppModel &model, Flow<> flow, std::shared_ptr<Course> run)
{
    co_await flow;
    run->over = true;
    if (run->action.said) run->saidAtItsEnd = run->action.said(model);
}

/// The sentences that may be overwritten by one that is refused.
class Sentences {
public:
    explicit Sentences(AppModel &model)
        : m_model(model)
        , m_all{model.notice(),     model.startMessage(), model.updateMessage(),
                model.dnsMessage(), model.apiMessage(),   model.repair()->message()}
    {}
    void putBack() const
    {
        m_model.setNotice(m_all[0]);
        m_model.setStartMessage(m_all[1]);
        m_model.setUpdateMessage(m_all[2]);
        m_model.setDnsMessage(m_all[3]);
        m_model.setApiMessage(m_all[4]);
        m_model.repair()->setMessage(m_all[5]);
    }

private:
    AppModel &m_model;
    QStringList m_all;
};

/// Any two actions of the user's, on a Mac that is set up.
class Pairs : public FlowTest {
protected:
    Pairs()
        : FlowTest(QStringLiteral("protected"))
    {}

    void begin()
    {
        Mac::reset(QStringLiteral("protected"));
        model().setOutcomes({});
        model().setPinnedTag(QStringLiteral("2026.09.0"));
        model().setWebPort(8080);
        model().setAutostartColima(true);
        relaunch();
        prepareForActions(model(), user);
    }

    std::shared_ptr<Course> start(const UserAction &action)
    {
        if (action.prepare) action.prepare(model());
        action.forget(model());
        auto run = std::make_shared<Course>(action);
        launch(follow(model(), action.begin(model()), run));
        return run;
    }

    /// What stands in the way of an action at this moment: what is under way, and what waits for an answer.
    Activities inTheWayOf(const UserAction &action, const UserAction &asking) const
    {
        Activities now = model_().underWay();
        if ((dialogs.alert() || dialogs.panel()) && asking.activity) now |= *asking.activity;
        return action.activity ? now & excludedBy(*action.activity) : Activities();
    }

    /// Each action that may not begin now says so, and nothing else happens.
    void expectRefusals(const UserAction &first)
    {
        const Activities before = model().underWay();
        for (const UserAction &second : userActions()) {
            const Activities obstacles = inTheWayOf(second, first);
            if (!obstacles) continue;
            const Sentences sentences(model());
            const QString wayBack = model().wayBack();
            const auto latest = model().latestTag();
            const bool autostart = model().autostartColima();
            const auto run = start(second);
            const bool itself = obstacles.contains(*second.activity) || second.quietlyRefused;
            const bool setOnly = second.activity == Activity::Autostart && model().installOp()->running();
            if (!itself && !setOnly) {
                EXPECT_TRUE(refused(second)) << second.name << " during " << first.name << " said: '"
                                             << second.said(model()).toStdString() << "'";
            }
            EXPECT_TRUE(run->over) << second.name << " began during " << first.name;
            EXPECT_EQ(model().underWay(), before) << second.name << " began during " << first.name;
            model().setWayBack(wayBack);
            model().setLatestTag(latest);
            model().setAutostartColima(autostart);
            sentences.putBack();
            ++m_refusals;
        }
    }

    bool refused(const UserAction &action)
    {
        const QString text = action.said(model());
        return text.startsWith(kNotNow) || text.startsWith(QStringLiteral("Pi-hole is refreshing its block lists."));
    }

    /// How often the action waits for something outside.
    int waitsOf(const UserAction &action)
    {
        begin();
        Waits waits([](int) {});
        const auto run = start(action);
        rest({run});
        EXPECT_TRUE(!action.said || !run->saidAtItsEnd.isEmpty() || !saidNow(action).isEmpty()) << action.name;
        return waits.count();
    }

    QString saidNow(const UserAction &action) { return action.said ? action.said(model()) : QString(); }

    /// Lets everything come to its end.
    void rest(const QList<std::shared_ptr<Course>> &runs)
    {
        const QDeadlineTimer patience(120'000);
        const auto over = [&] {
            return quiet() && !dialogs.alert() && !dialogs.panel() && !model().starting() &&
                   std::ranges::all_of(runs, [](const auto &run) { return run->over; });
        };
        QTimer tick;
        tick.start(20);
        while (!over() && !patience.hasExpired())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        for (const auto &run : runs)
            EXPECT_TRUE(run->over) << run->action.name << " never ended";
        EXPECT_TRUE(quiet()) << QStringList(model().busy().values()).join(u' ').toStdString();
        EXPECT_TRUE(model().busy().isEmpty());
    }

    /// Begins the first, and the second at that wait of it.
    void play(const UserAction &first, const UserAction &second, int moment)
    {
        SCOPED_TRACE(testing::Message() << second.name << " at wait " << moment << " of " << first.name);
        begin();
        QList<std::shared_ptr<Course>> runs;
        bool mayBegin = true;
        Waits waits([&](int wait) {
            if (wait != moment || runs.size() != 1) return; // it may have begun after the first had ended
            mayBegin = !inTheWayOf(second, first);
            runs.first()->saidBefore = saidNow(first);
            runs += start(second);
            if (mayBegin && second.activity && second.said) {
                EXPECT_FALSE(refused(second)) << saidNow(second).toStdString();
            }
        });
        runs += start(first);
        rest(runs);
        if (runs.size() == 1) runs += start(second); // the first was quicker than it was before
        rest(runs);
        expectAllSaid(runs, mayBegin);
        expectWhole();
        ++m_played;
    }

    void expectAllSaid(const QList<std::shared_ptr<Course>> &runs, bool secondBegan)
    {
        for (const auto &run : runs) {
            const UserAction &other = (run == runs.first() ? runs.last() : runs.first())->action;
            if (!run->action.said || (run == runs.last() && !secondBegan) || outdates(other, run->action)) continue;
            const QString said = run->saidBefore + run->saidAtItsEnd + saidNow(run->action);
            EXPECT_FALSE(said.isEmpty()) << run->action.name << " beside " << other.name << " says nothing at its end";
        }
    }

    /// What a test found does not count any more when the thing that it tests was changed meanwhile.
    static bool outdates(const UserAction &change, const UserAction &test)
    {
        if (!test.quietlyRefused) return false;
        return change.activity == test.activity || change.activity == Activity::Removal ||
               change.activity == Activity::RestoreDns || change.activity == Activity::Update;
    }

    /// Files, container and DNS agree, whatever happened side by side.
    void expectWhole()
    {
        run(model().refreshStatus(Stats::Include));
        run(model().putRight());
        if (QFile::exists(PiholeFiles::compose())) {
            EXPECT_EQ(PiholeFiles::composeTag(), model().pinnedTag());
            EXPECT_EQ(PiholeFiles::composePort(), model().webPort());
            EXPECT_TRUE(PiholeFiles::environmentIsWhole(model().adminPassword()));
        }
        const QString image = PiholeFiles::containerImage();
        if (!image.isEmpty() && !model().notes().contains(QStringLiteral("version"))) {
            EXPECT_EQ(image, QStringLiteral("pihole/pihole:") + model().pinnedTag());
        }
        const auto saved = DNSBackup::load();
        if (model().usedByMac()) {
            EXPECT_EQ(saved.size(), 1);
        }
        if (!saved.isEmpty()) {
            EXPECT_EQ(contentOf(RestoreScript::file()), RestoreScript::text(saved));
        }
    }

    AppModel &model_() const { return const_cast<Pairs *>(this)->model(); }

    int m_refusals = 0;
    int m_played = 0;
};

using Sample = Pairs;

/// One first action; every other one beside it.
class AnyTwo : public Pairs, public testing::WithParamInterface<int> {};

} // namespace

TEST_P(AnyTwo, What_may_not_begin_says_so_at_every_wait_of_the_first)
{
    const UserAction &first = userActions()[GetParam()];
    begin();
    Waits waits([&](int) { expectRefusals(first); });
    const auto run = start(first);
    rest({run});
    expectWhole();
    std::printf("%s: %d waits, %d refusals\n", first.name, waits.count(), m_refusals);
}

TEST_P(AnyTwo, Whatever_may_begin_comes_to_its_end_beside_the_first)
{
    const UserAction &first = userActions()[GetParam()];
    const int waits = std::max(1, waitsOf(first));
    for (qsizetype i = 0; i < userActions().size() && !HasFatalFailure(); ++i) {
        // Each second one at another wait, so that all of them are met.
        play(first, userActions()[i], static_cast<int>((i * 7 + GetParam()) % waits));
    }
    std::printf("%s: %d waits, %d pairs\n", first.name, waits, m_played);
}

TEST_F(Sample, Of_pairs_that_may_run_side_by_side_comes_to_its_end)
{
    std::mt19937 dice(20261122);
    const auto any = [&dice] { return userActions()[dice() % static_cast<quint32>(userActions().size())]; };
    for (int i = 0; i < kSample; ++i) {
        const UserAction first = any();
        play(first, any(), static_cast<int>(dice() % 12));
    }
}

INSTANTIATE_TEST_SUITE_P(Actions, AnyTwo, testing::Range(0, static_cast<int>(userActions().size())),
                         [](const testing::TestParamInfo<int> &each) {
                             return std::string(userActions()[each.param].name);
                         });

} // namespace corvane::test
