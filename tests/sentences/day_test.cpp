#include "app/day_keeper.h"
#include "tests/sentences/on_screen.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QRegularExpression>

#include <utility>

namespace corvane::test {

namespace {

/// What is said about the last 24 hours.
class TheDay : public OnScreen {
protected:
    void beginOnDashboard(const char *state)
    {
        begin(state);
        openDashboard();
    }

    void look() { run(model().refreshStatus(Stats::Include)); }

    /// Whether the sentence in that place comes to look so.
    [[nodiscard]] testing::AssertionResult says(const char *place, const char *pattern)
    {
        const QRegularExpression wanted(QRegularExpression::anchoredPattern(QString::fromUtf8(pattern)));
        const auto text = [&] { return textOf(QString::fromLatin1(place)); };
        if (eventually([&] { return wanted.match(text()).hasMatch(); })) return testing::AssertionSuccess();
        return testing::AssertionFailure() << text().toStdString() << "\nis not as in\n" << pattern;
    }
    [[nodiscard]] testing::AssertionResult sums(const char *pattern) { return says("dayText", pattern); }

    /// A record in which everything happened that can happen to this Mac.
    static void writeRecord()
    {
        const qint64 now = QDateTime::currentSecsSinceEpoch();
        QByteArray text = "corvane day 1\n";
        qint64 end = now - 23 * 3600;
        for (const auto &[minutes, state] : {std::pair{123, Protection::Protected},
                                             {36, Protection::NotBlocking},
                                             {12, Protection::Backup},
                                             {1, Protection::Down},
                                             {60, Protection::NotUsed},
                                             {450, Protection::Asleep}}) {
            const qint64 start = std::exchange(end, end + qint64{minutes} * 60);
            text += "span " + QByteArray::number(start) + ' ' + QByteArray::number(end) + ' ' +
                    QByteArray::number(static_cast<int>(state)) + '\n';
        }
        QFile file(DayKeeper::path());
        EXPECT_TRUE(file.open(QIODevice::WriteOnly)) << qPrintable(file.errorString());
        file.write(text + "end\n");
    }
};

} // namespace

TEST_F(TheDay, Is_summed_up_and_told_slot_by_slot)
{
    begin("protected");
    mac("pihole-day 5000 0");
    openDashboard();
    EXPECT_TRUE(appear({"The last 24 hours", "Allowed", "Blocked", "Blocked most", "Now"}));
    look();
    EXPECT_TRUE(sums("[45],\\d{3} questions in the last 24 hours, 1,2\\d\\d blocked \\(2\\d\\.\\d %\\)\\."));
    EXPECT_TRUE(says("dayNote", "Corvane's own questions are left out as far as it counted them: \\d+\\."));
    EXPECT_TRUE(appears("ad0.example.net"));
    find(QStringLiteral("dayCanvas"))->forceActiveFocus(Qt::TabFocusReason);
    press(Qt::Key_Left);
    // A slot that has just begun knows of nothing before the next look.
    EXPECT_TRUE(eventually([&] {
        look();
        return textOf(QStringLiteral("dayText")).contains(QLatin1String("Protected "));
    }));
    EXPECT_TRUE(sums("\\d\\d:\\d\\d to now: \\d+ allowed, \\d+ blocked\\. Protected .*\\."));
    press(Qt::Key_Home);
    EXPECT_TRUE(sums("\\d\\d:\\d\\d to \\d\\d:\\d\\d: \\d+ allowed, \\d+ blocked\\."));
}

TEST_F(TheDay, Is_young_when_pihole_was_just_set_up)
{
    beginOnDashboard("running");
    EXPECT_TRUE(appears("Nothing has been blocked yet."));
    // Pi-hole may ask for a name itself in between.
    EXPECT_TRUE(eventually([&] {
        mac("pihole-day 0 0");
        look();
        return textOf(QStringLiteral("dayText")) == QLatin1String("Nothing has been asked in the last 24 hours.");
    }));
    EXPECT_TRUE(eventually([&] {
        mac("pihole-day 1 1");
        look();
        return textOf(QStringLiteral("dayText")).startsWith(QLatin1String("1 question since "));
    }));
    EXPECT_TRUE(sums("1 question since \\d\\d:\\d\\d, 1 blocked \\(100\\.0 %\\)\\."));
    mac("pihole privacy 1");
    for (int pass = 0; pass < 2; ++pass) // the names and what explains them are read in turn
        run(model().refreshStatus(Stats::Leave));
    EXPECT_TRUE(appears("Pi-hole shows no names (its privacy level)."));
}

TEST_F(TheDay, Waits_for_a_pihole_that_does_not_answer)
{
    beginOnDashboard("stopped");
    EXPECT_TRUE(appears("What was asked can be shown once Pi-hole answers."));
    begin("running");
    mac("pihole web hang");
    openDashboard();
    EXPECT_TRUE(appears("Reading what was asked..."));
    mac("pihole web on");
}

TEST_F(TheDay, Says_when_the_picture_is_an_old_one)
{
    beginOnDashboard("protected");
    look();
    EXPECT_TRUE(model().history());
    model().setAdminPassword(QStringLiteral("not-the-password"));
    look();
    EXPECT_TRUE(appears("The picture is not up to date. Pi-hole refused the admin password."));
    mac("container stop");
    look();
    EXPECT_TRUE(appears("Pi-hole does not answer. What it had counted before is still shown."));
}

TEST_F(TheDay, Tells_how_long_this_mac_was_protected)
{
    start("bare");
    startAgain(&TheDay::writeRecord);
    openDashboard();
    EXPECT_TRUE(appears("Protected 2 h 3 min, 12 min on the backup, 1 min without any answer, 36 min without blocking, "
                        "1 h without Pi-hole, 7 h 30 min asleep."));
    EXPECT_TRUE(appear({"Protected", "Not blocking", "On the backup", "No answer", "Pi-hole not used", "Asleep"}));
}

TEST_F(TheDay, Is_told_when_its_record_cannot_be_kept)
{
    start("running");
    startAgain([] { EXPECT_TRUE(QDir().mkpath(DayKeeper::path() + QStringLiteral("/inside"))); });
    openDashboard();
    look();
    EXPECT_TRUE(appearsWithReason("The day's record could not be saved: "));
    EXPECT_TRUE(QDir(DayKeeper::path()).removeRecursively());
}

} // namespace corvane::test
