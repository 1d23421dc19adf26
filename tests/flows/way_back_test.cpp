#include "tests/flows/exchange.h"

#include <QDir>

namespace corvane::test {

namespace {

class WayBack : public ExchangeTest {
protected:
    void cancelUpdateInItsLastStep()
    {
        updateUpTo(QStringLiteral("run"));
        model().maintOp()->cancel();
        waitFor([this] { return !model().wayBack().isEmpty(); }, "the way back is offered");
        Mac::ctl(QStringLiteral("fault clear"));
    }

    void updateToAnUnhealthyOne(const QString &tag = QStringLiteral("2026.10.0"))
    {
        model().setLatestTag(tag);
        Mac::ctl(QStringLiteral("pihole times real")); // it takes half a minute to call itself healthy
        launch(model().performUpdate());
        waitFor([&] { return model().updateMessage() == QStringLiteral("Updated to %1.").arg(tag); }, "it runs");
        Mac::ctl(QStringLiteral("container health unhealthy"));
        waitFor([this] { return quiet(); }, "the tests ended");
        compare();
        Mac::ctl(QStringLiteral("pihole times fast"));
    }

    const QString kBetween = QStringLiteral("2026.09.1");

    static QStringList pulls() { return Mac::calls(QStringLiteral("docker")).filter(QStringLiteral("pull")); }
};

} // namespace

TEST_F(WayBack, Is_offered_when_an_update_ends_after_the_old_container_has_gone)
{
    cancelUpdateInItsLastStep();
    EXPECT_TEXT(model().updateMessage(), kRolledBack);
    EXPECT_TEXT(model().wayBack(), "2026.09.0");
    EXPECT_TEXT(versionNote(), "There is no container of Pi-hole at the moment.");
    EXPECT_TRUE(model().containerState().isMissing());
    EXPECT_TEXT(PiholeFiles::containerImage(), "") << "nothing starts by itself";
    expectAllOf(kOldTag, 8080);
}

TEST_F(WayBack, Makes_the_container_of_the_old_version_from_the_image_that_is_there)
{
    cancelUpdateInItsLastStep();
    const auto before = pulls().size();
    run(model().bringBack());
    EXPECT_TEXT(model().maintOp()->title(), "Bringing version 2026.09.0 back");
    EXPECT_TEXT(model().updateMessage(), "Version 2026.09.0 is back.");
    EXPECT_TEXT(PiholeFiles::containerImage(), "pihole/pihole:2026.09.0");
    EXPECT_EQ(PiholeFiles::volumes(), PiholeFiles::bothVolumes());
    EXPECT_EQ(pulls().size(), before);
    EXPECT_TEXT(model().wayBack(), "");
    EXPECT_TEXT(versionNote(), "");
    EXPECT_TRUE(model().outcomes().value(QStringLiteral("pihole")).passed);
    EXPECT_TRUE(QCoro::waitFor(model().api().webAnswers()));
    expectAllOf(kOldTag, 8080);
}

TEST_F(WayBack, Is_not_offered_while_the_old_container_runs_on)
{
    Mac::ctl(QStringLiteral("internet off"));
    run(model().performUpdate());
    EXPECT_TEXT(model().updateMessage(), kRolledBack);
    EXPECT_TEXT(model().wayBack(), "");
    EXPECT_TEXT(versionNote(), "");
}

TEST_F(WayBack, Is_not_needed_after_a_good_update)
{
    run(model().performUpdate());
    EXPECT_TEXT(model().updateMessage(), "Updated to 2026.10.0.");
    EXPECT_TEXT(model().wayBack(), "");
    relaunch();
    compare();
    EXPECT_TEXT(model().wayBack(), "");
}

TEST_F(WayBack, Leads_away_from_a_version_that_does_not_get_healthy)
{
    updateToAnUnhealthyOne();
    EXPECT_TEXT(model().updateMessage(),
                "Version 2026.10.0 was installed, but Pi-hole does not get healthy with it: its container is "
                "'unhealthy'.");
    EXPECT_TEXT(model().wayBack(), "2026.09.0");
    expectAllOf(kNewTag, 8080);
    relaunch();
    compare();
    EXPECT_TEXT(model().wayBack(), "2026.09.0") << "also after a new start of Corvane";

    run(model().bringBack());
    expectAllOf(kOldTag, 8080);
    EXPECT_TEXT(PiholeFiles::containerImage(), "pihole/pihole:2026.09.0");
    EXPECT_TEXT(model().wayBack(), "");
}

TEST_F(WayBack, Leads_past_a_version_that_never_got_healthy)
{
    updateToAnUnhealthyOne(kBetween);
    updateToAnUnhealthyOne();
    EXPECT_TEXT(model().wayBack(), "2026.09.0");
    relaunch();
    compare();
    EXPECT_TEXT(model().wayBack(), "2026.09.0") << "also after a new start of Corvane";
    run(model().bringBack());
    expectAllOf(kOldTag, 8080);
    EXPECT_TEXT(model().wayBack(), "");
    EXPECT_TEXT(settings.value(QStringLiteral("goodTag")).toString(), "") << "it has proved itself";
}

TEST_F(WayBack, Leads_on_from_a_version_that_never_got_healthy_and_is_back)
{
    updateToAnUnhealthyOne(kBetween);
    model().setLatestTag(kNewTag);
    Mac::ctl(QStringLiteral("internet off"));
    run(model().performUpdate());
    expectAllOf(kBetween, 8080);
    compare();
    EXPECT_TEXT(model().wayBack(), "2026.09.0");
}

TEST_F(WayBack, Leads_away_from_a_version_that_does_not_start)
{
    for (const char *state : {"restarting", "created", "dead"}) {
        run(model().performUpdate());
        settings.setValue(QStringLiteral("leftTag"), kOldTag);
        relaunch();
        model().setContainerState(ContainerState::stopped(QString::fromLatin1(state)));
        run(model().putRight());
        EXPECT_TEXT(model().wayBack(), "2026.09.0") << state;
    }
    relaunch();
    model().setContainerState(ContainerState::stopped(QStringLiteral("exited")));
    run(model().putRight());
    EXPECT_TEXT(model().wayBack(), "") << "somebody has stopped it";
}

TEST_F(WayBack, Is_taken_back_when_the_new_version_gets_healthy_after_all)
{
    updateToAnUnhealthyOne();
    Mac::ctl(QStringLiteral("container health healthy"));
    compare();
    EXPECT_TEXT(model().wayBack(), "");
    EXPECT_TEXT(model().updateMessage(), "Updated to 2026.10.0.");
    relaunch();
    compare();
    EXPECT_TEXT(model().wayBack(), "");
}

TEST_F(WayBack, Stays_on_offer_when_it_fails)
{
    cancelUpdateInItsLastStep();
    Mac::ctl({QStringLiteral("fault"), QStringLiteral("docker"), QStringLiteral("fail"), QStringLiteral("125"),
              QStringLiteral("no space left on device"), QStringLiteral("--when"), QStringLiteral("run *")});
    run(model().bringBack());
    EXPECT_TRUE(model().updateMessage().startsWith(
        QStringLiteral("Version 2026.09.0 was not brought back: The Colima disk is full.")))
        << model().updateMessage().toStdString();
    EXPECT_TEXT(model().wayBack(), "2026.09.0");
    expectAllOf(kOldTag, 8080);
}

TEST_F(WayBack, Touches_no_container_when_the_files_cannot_be_written)
{
    updateToAnUnhealthyOne();
    QFile::remove(PiholeFiles::compose());
    QDir().mkpath(PiholeFiles::compose());
    run(model().bringBack());
    EXPECT_TRUE(model().updateMessage().startsWith(QStringLiteral("Could not write the new compose file: ")))
        << model().updateMessage().toStdString();
    EXPECT_TEXT(PiholeFiles::containerImage(), "pihole/pihole:2026.10.0");
    EXPECT_TEXT(versionNote(), "The container is of version 2026.10.0.");
    QDir().rmdir(PiholeFiles::compose());
}

TEST_F(WayBack, Is_forgotten_by_a_removal)
{
    cancelUpdateInItsLastStep();
    run(model().removePihole());
    EXPECT_TEXT(model().wayBack(), "");
    EXPECT_TEXT(versionNote(), "");
}

} // namespace corvane::test
