#include "tests/flows/in_state.h"

#include <QTimer>

namespace corvane::test {

namespace {

/// A test that is under way when Pi-hole is removed.
struct Begun {
    const char *name;
    Flow<> (*run)(AppModel &model);
    int milliseconds;
};

void PrintTo(const Begun &begun, std::ostream *out) { *out << begun.name << " after " << begun.milliseconds << " ms"; }

Flow<> testPihole(AppModel &model) { return model.runPiholeTests(Wait::ForStart); }
Flow<> testBlocking(AppModel &model) { return model.runBlockingTest(); }
Flow<> testSystem(AppModel &model) { return model.runSystemTest(); }
Flow<> testBrowser(AppModel &model) { return model.runBrowserTest(); }
Flow<> testAll(AppModel &model) { return model.runAllTests(); }
Flow<> check(AppModel &model) { return model.runSystemChecks(); }

QList<Begun> everyTestAtSomeMoments()
{
    QList<Begun> all;
    for (const int moment : {0, 10, 40, 120, 300}) {
        all += {{"pihole", testPihole, moment},   {"blocking", testBlocking, moment}, {"system", testSystem, moment},
                {"browser", testBrowser, moment}, {"all", testAll, moment},           {"checks", check, moment}};
    }
    return all;
}

class TestUnderWay : public Running, public testing::WithParamInterface<Begun> {
protected:
    TestUnderWay()
    {
        // Each of them takes longer than the removal, and the Pi-hole tests wait for health.
        Mac::ctl(QStringLiteral("container health starting"));
        Mac::ctl(QStringLiteral("fault dig late 0.15"));
        Mac::ctl(QStringLiteral("pihole login-limit 100"));
    }

    void beginAndWait()
    {
        launch(GetParam().run(model()));
        bool passedBy = false;
        QTimer::singleShot(GetParam().milliseconds, &user, [&passedBy] { passedBy = true; });
        waitFor([&passedBy] { return passedBy; }, "the moment");
    }
};

} // namespace

TEST_P(TestUnderWay, Writes_nothing_after_a_removal)
{
    beginAndWait();
    run(model().removePihole());
    EXPECT_TEXT(model().notice(), "Pi-hole was removed.");
    waitFor([this] { return quiet(); }, "the test ended");
    EXPECT_TRUE(model().piholeChecks().isEmpty());
    EXPECT_TRUE(model().systemChecks().isEmpty());
    EXPECT_FALSE(model().blockingTest());
    EXPECT_TEXT(model().systemTestDetail(), "");
    EXPECT_TEXT(model().browserTestDetail(), "");
    EXPECT_TRUE(model().outcomes().isEmpty()) << model().outcomes().keys().join(u' ').toStdString();
    EXPECT_FALSE(model().udpProblem());
}

TEST_P(TestUnderWay, Ends_quietly_when_the_model_goes_away)
{
    beginAndWait();
    relaunch();
    EXPECT_TRUE(model().outcomes().isEmpty());
    EXPECT_TRUE(quiet());
}

INSTANTIATE_TEST_SUITE_P(Tests, TestUnderWay, testing::ValuesIn(everyTestAtSomeMoments()),
                         [](const testing::TestParamInfo<Begun> &each) {
                             return std::string(each.param.name) + '_' + std::to_string(each.param.milliseconds);
                         });

} // namespace corvane::test
