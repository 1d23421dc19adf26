#include "tests/flows/exchange.h"

#include <QFile>

namespace corvane::test {

namespace {

/// Corvane starts on what was left when it was cut off.
class CutOff : public ExchangeTest {
protected:
    /// Settings and files as they are after the first steps of an update or a port change.
    void leave(const QString &pinned, const QString &left, int port = 8080)
    {
        model().setPinnedTag(pinned);
        settings.setValue(QStringLiteral("leftTag"), left);
        model().setWebPort(port);
        ASSERT_TRUE(PiholeController::writeFiles(pinned, port, model().adminPassword()));
    }

    void startAgain()
    {
        relaunch();
        compare();
    }

    QString left() { return settings.value(QStringLiteral("leftTag")).toString(); }
};

} // namespace

TEST_F(CutOff, An_update_that_never_replaced_the_container_is_rolled_back)
{
    leave(kNewTag, kOldTag);
    startAgain();
    expectAllOf(kOldTag, 8080);
    EXPECT_TEXT(model().updateMessage(), kRolledBack);
    EXPECT_TEXT(model().wayBack(), "") << "it runs";
    EXPECT_TEXT(versionNote(), "");
    EXPECT_TEXT(left(), "");
}

TEST_F(CutOff, An_update_killed_in_its_first_command_is_rolled_back)
{
    updateUpTo(QStringLiteral("pull"));
    startAgain();
    expectAllOf(kOldTag, 8080);
    EXPECT_TEXT(model().updateMessage(), kRolledBack);
}

TEST_F(CutOff, An_update_that_left_no_container_pins_the_old_version_and_offers_it)
{
    updateUpTo(QStringLiteral("run"));
    startAgain();
    expectAllOf(kOldTag, 8080);
    EXPECT_TEXT(model().updateMessage(), kRolledBack);
    EXPECT_TEXT(model().wayBack(), "2026.09.0");
    EXPECT_TEXT(versionNote(), "There is no container of Pi-hole at the moment.");
    EXPECT_TEXT(PiholeFiles::containerImage(), "") << "nothing starts by itself";
    startAgain();
    EXPECT_TEXT(model().wayBack(), "2026.09.0") << "still";
}

TEST_F(CutOff, An_update_that_had_made_the_new_container_stays)
{
    run(model().performUpdate());
    settings.setValue(QStringLiteral("leftTag"), kOldTag);
    startAgain();
    expectAllOf(kNewTag, 8080);
    EXPECT_TEXT(model().updateMessage(), "");
    EXPECT_TEXT(left(), "") << "it is healthy";
}

TEST_F(CutOff, A_port_change_that_never_moved_the_container_goes_back_to_its_port)
{
    leave(kOldTag, {}, 8083);
    startAgain();
    expectAllOf(kOldTag, 8080);
    EXPECT_TEXT(model().notice(), "The web port is 8080 again, where Pi-hole runs.");
    EXPECT_TRUE(QCoro::waitFor(model().api().webAnswers()));
}

TEST_F(CutOff, A_port_change_that_left_no_container_offers_one)
{
    leave(kOldTag, {}, 8083);
    Mac::ctl(QStringLiteral("container rm"));
    startAgain();
    expectAllOf(kOldTag, 8083);
    EXPECT_TEXT(model().wayBack(), "2026.09.0");
    run(model().bringBack());
    EXPECT_TRUE(QCoro::waitFor(model().api().webAnswers())) << "on the new port";
    EXPECT_TEXT(model().wayBack(), "");
}

TEST_F(CutOff, Files_that_say_otherwise_than_the_settings_are_written_anew)
{
    leave(kNewTag, {}, 8083);
    model().setPinnedTag(kOldTag);
    model().setWebPort(8080);
    startAgain();
    expectAllOf(kOldTag, 8080);
    EXPECT_TEXT(model().notice(), "");
}

TEST_F(CutOff, A_password_file_that_is_gone_is_written_anew)
{
    QFile::remove(PiholeFiles::environment());
    startAgain();
    expectAllOf(kOldTag, 8080);
}

TEST_F(CutOff, A_container_of_another_version_than_the_pinned_one_is_told)
{
    leave(kNewTag, {});
    startAgain();
    expectAllOf(kNewTag, 8080);
    EXPECT_TEXT(versionNote(), "The container is of version 2026.09.0.");
    EXPECT_TEXT(model().wayBack(), "2026.10.0");
}

TEST_F(CutOff, A_stopped_container_on_another_port_is_told)
{
    leave(kOldTag, {}, 8083);
    Mac::ctl(QStringLiteral("container stop"));
    startAgain();
    EXPECT_TEXT(versionNote(), "The container has its admin page on another port than 8083.");
    EXPECT_TEXT(model().wayBack(), "2026.09.0");
    Mac::ctl(QStringLiteral("container start"));
    compare();
    expectAllOf(kOldTag, 8080);
    EXPECT_TEXT(versionNote(), "");
    EXPECT_TEXT(model().wayBack(), "");
}

TEST_F(CutOff, What_agrees_is_left_alone)
{
    startAgain();
    expectAllOf(kOldTag, 8080);
    for (const QString &text : {model().updateMessage(), model().notice(), model().wayBack(), versionNote()})
        EXPECT_TEXT(text, "");
}

TEST_F(CutOff, Without_a_set_up_nothing_is_compared)
{
    model().setWizardFinished(false);
    QFile::remove(PiholeFiles::compose());
    startAgain();
    EXPECT_FALSE(QFile::exists(PiholeFiles::compose()));
    EXPECT_TEXT(model().wayBack(), "");
}

TEST_F(CutOff, Nothing_is_concluded_from_an_engine_that_does_not_tell)
{
    const QList<QStringList> troubles{
        {QStringLiteral("engine"), QStringLiteral("stop")},
        {QStringLiteral("fault"), QStringLiteral("docker"), QStringLiteral("fail"), QStringLiteral("1"),
         QStringLiteral("connect: no such file or directory"), QStringLiteral("--when"), QStringLiteral("inspect *")},
        {QStringLiteral("fault"), QStringLiteral("docker"), QStringLiteral("rubbish"), QStringLiteral("--when"),
         QStringLiteral("inspect *Config*")},
    };
    leave(kNewTag, kOldTag, 8083);
    for (const QStringList &trouble : troubles) {
        Mac::ctl(trouble);
        startAgain();
        expectAllOf(kNewTag, 8083);
        EXPECT_TEXT(left(), "2026.09.0");
        EXPECT_TEXT(model().updateMessage() + model().notice() + model().wayBack(), "");
        Mac::ctl(QStringLiteral("fault clear"));
        Mac::ctl(QStringLiteral("engine start"));
    }
    startAgain();
    expectAllOf(kOldTag, 8080);
}

TEST_F(CutOff, Nothing_is_concluded_while_something_else_changes_the_container)
{
    leave(kNewTag, kOldTag);
    relaunch();
    run(model().refreshStatus(Stats::Leave));
    Mac::ctl(QStringLiteral("fault docker late 1 --when inspect*Config*"));
    launch(model().putRight());
    run(model().stopPihole());
    waitFor([this] { return quiet(); }, "it came to rest");
    EXPECT_TEXT(model().pinnedTag(), "2026.10.0");
    Mac::ctl(QStringLiteral("fault clear"));
    compare();
    expectAllOf(kOldTag, 8080);
}

TEST_F(CutOff, Nothing_is_concluded_while_a_change_that_began_earlier_goes_on)
{
    leave(kNewTag, kOldTag);
    relaunch();
    run(model().refreshStatus(Stats::Leave));
    Mac::ctl(QStringLiteral("pihole silent on"));
    launch(model().loadBlockLists());
    ASSERT_TRUE(model().underWay().contains(Activity::LoadLists));
    run(model().putRight());
    expectAllOf(kNewTag, 8080);
    EXPECT_TEXT(left(), "2026.09.0");
    Mac::ctl(QStringLiteral("pihole silent off"));
    waitFor([this] { return quiet(); }, "the lists are done with");
    compare();
    expectAllOf(kOldTag, 8080);
}

TEST_F(CutOff, The_first_look_after_a_start_puts_it_right)
{
    leave(kNewTag, kOldTag, 8083);
    relaunch();
    launch(model().bootstrap());
    waitFor([this] { return model().pinnedTag() == kOldTag && quiet(); }, "the first look");
    expectAllOf(kOldTag, 8080);
}

} // namespace corvane::test
