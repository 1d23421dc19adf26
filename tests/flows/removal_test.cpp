#include "dns/dns_configurator.h"
#include "exec/keychain.h"
#include "tests/flows/flow_test.h"
#include "tests/flows/pihole_files.h"
#include "tests/flows/saved_files.h"

#include <QDir>

namespace corvane::test {

namespace {

class Removal : public FlowTest {
protected:
    Removal()
        : FlowTest(QStringLiteral("running"))
    {
        model().setWizardFinished(true);
        model().setShowWizard(false);
    }

    void remove() { run(model().removePihole()); }

    /// Points Wi-Fi at Pi-hole the way Corvane does, with a backup of what was there before.
    void protect(const QStringList &before = {})
    {
        Mac::ctl(QStringList{QStringLiteral("servers"), QStringLiteral("Wi-Fi")} + before);
        const QList<NetworkService> services = QCoro::waitFor(DNSConfigurator::listServices());
        ASSERT_TRUE(DNSConfigurator::saveBackup(services));
        Mac::ctl(QStringLiteral("servers Wi-Fi 127.0.0.1 1.1.1.1"));
    }

    static QStringList wifiServers()
    {
        QStringList servers;
        const QJsonArray services = Mac::ctl(QStringLiteral("services")).toArray();
        for (const QJsonValue &service : services) {
            if (service.toObject().value(QLatin1String("name")).toString() != QLatin1String("Wi-Fi")) continue;
            const QJsonArray all = service.toObject().value(QLatin1String("servers")).toArray();
            for (const QJsonValue &server : all)
                servers.append(server.toString());
        }
        return servers;
    }

    void expectNothingRemoved()
    {
        EXPECT_FALSE(PiholeFiles::containerImage().isEmpty());
        EXPECT_EQ(PiholeFiles::volumes(), PiholeFiles::bothVolumes());
        EXPECT_TEXT(PiholeFiles::composeTag(), "2026.09.0");
        EXPECT_TRUE(PiholeFiles::environmentIsWhole(QStringLiteral("correct-horse-9")));
        EXPECT_EQ(Keychain::load(), QStringLiteral("correct-horse-9"));
        EXPECT_TEXT(model().adminPassword(), "correct-horse-9");
        EXPECT_TRUE(model().wizardFinished());
        EXPECT_FALSE(model().showWizard());
    }

    void expectAllForgotten()
    {
        EXPECT_FALSE(QFile::exists(PiholeFiles::compose()));
        EXPECT_FALSE(QFile::exists(PiholeFiles::environment()));
        EXPECT_FALSE(Keychain::load());
        EXPECT_TEXT(model().adminPassword(), "");
        EXPECT_FALSE(model().wizardFinished());
        EXPECT_FALSE(settings.value(QStringLiteral("wizardFinished")).toBool());
        EXPECT_TRUE(model().showWizard());
        EXPECT_TRUE(model().outcomes().isEmpty());
        EXPECT_TRUE(model().piholeChecks().isEmpty());
        EXPECT_TRUE(model().busy().isEmpty());
    }
};

} // namespace

TEST_F(Removal, A_question_comes_first_and_cancel_removes_nothing)
{
    user.cancels();
    remove();
    ASSERT_EQ(user.alerts().size(), 1);
    const Alert alert = user.alerts().first();
    EXPECT_TEXT(alert.title, "Remove Pi-hole?");
    EXPECT_EQ(alert.style, Alert::Style::Warning);
    EXPECT_TEXT(alert.text, "This removes the container 'pihole' and its two data volumes 'pihole_etc' and "
                            "'pihole_dnsmasq'. Your saved DNS settings are restored first (administrator prompt). "
                            "Colima and Docker stay installed.");
    EXPECT_TEXT(alert.accept, "Remove Pi-hole");
    EXPECT_TEXT(alert.reject, "Cancel");
    expectNothingRemoved();
    EXPECT_EQ(Mac::prompts(), 0);
}

TEST_F(Removal, The_old_dns_is_back_before_the_container_goes)
{
    protect({QStringLiteral("9.9.9.9")});
    run(model().runPiholeTests(Wait::No));
    remove();
    EXPECT_TEXT(model().notice(), "Pi-hole was removed.");
    EXPECT_EQ(wifiServers(), QStringList(QStringLiteral("9.9.9.9")));
    EXPECT_EQ(Mac::prompts(), 1);
    EXPECT_TEXT(PiholeFiles::containerImage(), "");
    EXPECT_TRUE(PiholeFiles::volumes().isEmpty());
    expectAllForgotten();
    EXPECT_TRUE(DNSConfigurator::hasBackup()) << "the backup outlives Pi-hole";
    EXPECT_TRUE(model().containerState().isMissing());

    double restored = 0;
    double removed = 0;
    for (const QJsonObject &call : Mac::journal(QStringLiteral("osascript")))
        restored = call.value(QLatin1String("end")).toDouble();
    for (const QJsonObject &call : Mac::journal(QStringLiteral("docker"))) {
        if (call.value(QLatin1String("argv")).toArray().first().toString() == QLatin1String("rm"))
            removed = call.value(QLatin1String("start")).toDouble();
    }
    EXPECT_GT(restored, 0);
    EXPECT_GE(removed, restored);
}

TEST_F(Removal, No_service_is_left_pointing_at_a_pihole_that_is_gone)
{
    protect({QStringLiteral("9.9.9.9")});
    Mac::ctl(QStringLiteral("service add Ethernet en9 linked"));
    Mac::ctl(QStringLiteral("servers Ethernet 127.0.0.1"));
    remove();
    EXPECT_TEXT(model().notice(), "Pi-hole was removed.");
    EXPECT_EQ(wifiServers(), QStringList{QStringLiteral("9.9.9.9")});
    for (const NetworkService &service : QCoro::waitFor(DNSConfigurator::listServices()))
        EXPECT_FALSE(service.servers.contains(QStringLiteral("127.0.0.1"))) << service.name.toStdString();
    EXPECT_EQ(Mac::prompts(), 1);
    expectAllForgotten();
}

TEST_F(Removal, A_saved_service_that_is_gone_holds_nothing_up)
{
    Mac::ctl(QStringLiteral("service add Ethernet en9 linked"));
    protect({QStringLiteral("9.9.9.9")});
    Mac::ctl(QStringLiteral("service remove Ethernet"));
    remove();
    EXPECT_TEXT(model().notice(), "Pi-hole was removed.");
    EXPECT_TEXT(model().dnsMessage(), "Not on this Mac any more: Ethernet. The old servers stay saved.");
    EXPECT_EQ(wifiServers(), QStringList{QStringLiteral("9.9.9.9")});
    expectAllForgotten();
}

TEST_F(Removal, The_set_up_begins_anew_at_its_first_step)
{
    model().go(7);
    remove();
    EXPECT_EQ(model().step(), 0);
    EXPECT_EQ(model().visited(), QSet<int>{0});
}

TEST_F(Removal, The_next_start_shows_the_wizard_without_a_password)
{
    remove();
    relaunch();
    EXPECT_TRUE(model().showWizard());
    EXPECT_TEXT(model().adminPassword(), "");
}

TEST_F(Removal, A_mac_that_does_not_use_pihole_and_has_no_backup_is_asked_for_no_password)
{
    remove();
    EXPECT_EQ(Mac::prompts(), 0);
    EXPECT_TEXT(model().notice(), "Pi-hole was removed.");
    expectAllForgotten();
}

TEST_F(Removal, A_prompt_that_is_cancelled_removes_nothing)
{
    protect();
    Mac::ctl(QStringLiteral("prompt cancel once"));
    remove();
    EXPECT_TEXT(model().notice(), "Pi-hole was not removed because your DNS could not be restored: You cancelled the "
                                  "administrator prompt. Nothing was changed.");
    EXPECT_EQ(wifiServers(), (QStringList{QStringLiteral("127.0.0.1"), QStringLiteral("1.1.1.1")}));
    expectNothingRemoved();
    EXPECT_TRUE(model().busy().isEmpty());

    remove();
    EXPECT_TEXT(model().notice(), "Pi-hole was removed.");
}

TEST_F(Removal, A_damaged_backup_puts_a_mac_that_uses_pihole_back_to_automatic)
{
    protect();
    write(DNSConfigurator::backupFile(), "{ not a backup");
    remove();
    EXPECT_TEXT(model().notice(), "Pi-hole was removed.");
    EXPECT_TRUE(wifiServers().isEmpty());
}

TEST_F(Removal, A_damaged_backup_does_not_keep_a_pihole_that_nothing_uses)
{
    write(DNSConfigurator::backupFile(), "[]");
    remove();
    EXPECT_TEXT(model().notice(), "Pi-hole was removed.");
    EXPECT_EQ(Mac::prompts(), 0);
}

TEST_F(Removal, Services_that_cannot_be_read_and_a_damaged_backup_keep_pihole)
{
    protect();
    write(DNSConfigurator::backupFile(), "[]");
    Mac::ctl(QStringLiteral("fault networksetup fail 1"));
    remove();
    EXPECT_TEXT(model().notice(), "Pi-hole was not removed because your DNS could not be restored: There is nothing to "
                                  "restore: no saved settings and no service points at Pi-hole.");
    expectNothingRemoved();
}

TEST_F(Removal, With_the_engine_down_dns_is_back_and_the_message_says_so)
{
    protect();
    Mac::ctl(QStringLiteral("engine stop"));
    remove();
    EXPECT_TEXT(model().notice(),
                "Docker could not remove everything: Docker is not running. Start Colima first (step 3).");
    EXPECT_TRUE(wifiServers().isEmpty());
    expectAllForgotten();

    Mac::ctl(QStringLiteral("engine start"));
    remove();
    EXPECT_TEXT(model().notice(), "Pi-hole was removed.");
    EXPECT_TRUE(PiholeFiles::volumes().isEmpty());
    EXPECT_TEXT(PiholeFiles::containerImage(), "");
}

TEST_F(Removal, Without_docker_the_message_says_so)
{
    Mac::ctl(QStringLiteral("fault docker vanish"));
    remove();
    EXPECT_TEXT(model().notice(), "Docker could not remove everything: docker was not found.");
}

TEST_F(Removal, Volumes_that_stay_are_told)
{
    Mac::ctl({QStringLiteral("fault"), QStringLiteral("docker"), QStringLiteral("fail"), QStringLiteral("1"),
              QStringLiteral("remove pihole_etc: volume is in use"), QStringLiteral("--when"),
              QStringLiteral("volume *")});
    remove();
    EXPECT_TEXT(model().notice(),
                "Docker could not remove everything: Docker reported an error. Open 'Show details' to read it.");
}

TEST_F(Removal, Twice_still_ends_well)
{
    protect();
    remove();
    remove();
    EXPECT_TEXT(model().notice(), "Pi-hole was removed.");
    expectAllForgotten();
    EXPECT_TRUE(wifiServers().isEmpty());
}

TEST_F(Removal, Nothing_else_begins_while_it_runs)
{
    protect();
    run(model().loadServices());
    run(model().refreshStatus(Stats::Leave));
    Mac::ctl(QStringLiteral("fault docker late 0.5 --when rm*"));
    launch(model().removePihole());
    waitFor([] { return Mac::calls(QStringLiteral("docker")).contains(QStringLiteral("rm -f pihole")); }, "it removes");
    EXPECT_TRUE(model().busy().contains(QStringLiteral("restoredns")));
    run(model().removePihole());
    run(model().applyDNS());
    run(model().restoreOldSettings());
    run(model().changeWebPort(8082));
    EXPECT_EQ(user.titles(), QStringList(QStringLiteral("Remove Pi-hole?")));
    EXPECT_EQ(model().webPort(), 8080);
    waitFor([this] { return quiet(); }, "the removal ended");
    EXPECT_TEXT(model().notice(), "Pi-hole was removed.");
    EXPECT_TRUE(wifiServers().isEmpty());
}

} // namespace corvane::test
