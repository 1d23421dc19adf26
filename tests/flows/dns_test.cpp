#include "dns/dns_backup.h"
#include "dns/dns_configurator.h"
#include "tests/flows/in_state.h"

#include <QDir>
#include <QFile>
#include <QTimer>

namespace corvane::test {

namespace {

using std::chrono::milliseconds;

const QString kSystem = QStringLiteral("system");

QStringList serversOf(const QString &service)
{
    const QJsonArray services = Mac::ctl(QStringLiteral("services")).toArray();
    for (const QJsonValue &each : services) {
        if (each[QLatin1String("name")].toString() != service) continue;
        return each[QLatin1String("servers")].toVariant().toStringList();
    }
    return {QStringLiteral("no such service")};
}

/// A Mac whose Pi-hole answers and whose services are loaded: the wizard's DNS step as it opens.
class DnsStep : public Running {
protected:
    DnsStep()
    {
        Mac::ctl(QStringLiteral("pihole log-delay 0"));
        Mac::ctl(QStringLiteral("pihole login-limit 1000")); // these tests log in faster than people
        run(model().refreshStatus(Stats::Leave));
        run(model().loadServices());
    }

    void select(const QStringList &names) { model().setSelectedServices(QSet<QString>(names.begin(), names.end())); }

    static QStringList savedServers(const QString &service)
    {
        for (const DNSBackupEntry &entry : DNSBackup::load()) {
            if (entry.service == service) return entry.servers;
        }
        return {QStringLiteral("not saved")};
    }

    /// Nothing was asked, run as administrator, saved or changed.
    void expectUntouched()
    {
        EXPECT_EQ(Mac::prompts(), 0);
        EXPECT_FALSE(QFile::exists(DNSConfigurator::backupFile()));
        EXPECT_EQ(serversOf(QStringLiteral("Wi-Fi")), QStringList());
        EXPECT_TRUE(quiet());
    }
};

const QString kWifi = QStringLiteral("Wi-Fi");
const QStringList kBoth{QStringLiteral("127.0.0.1"), QStringLiteral("1.1.1.1")};
const char *const kAllFound = "3 of 3 test lookups through the system resolver showed up in Pi-hole's log.";
const char *const kNotFirst = " The first DNS server macOS uses is not Pi-hole.";

} // namespace

TEST_F(DnsStep, The_service_with_the_internet_connection_is_preselected)
{
    ASSERT_EQ(model().services().size(), 2);
    EXPECT_EQ(model().services()[0], (NetworkService{kWifi, {}, true}));
    EXPECT_FALSE(model().services()[1].isDefaultRoute);
    EXPECT_EQ(model().selectedServices(), QSet<QString>{kWifi});
    auto loading = model().loadServices();
    EXPECT_TRUE(model().busy().contains(QStringLiteral("services")));
    run(std::move(loading));
    EXPECT_TRUE(quiet());
}

TEST_F(DnsStep, What_the_user_selected_stays_as_long_as_it_exists)
{
    Mac::ctl(QStringList{QStringLiteral("service"), QStringLiteral("add"), QStringLiteral("Ada's LAN")});
    select({QStringLiteral("Ada's LAN"), QStringLiteral("Gone")});
    run(model().loadServices());
    EXPECT_EQ(model().selectedServices(), QSet<QString>{QStringLiteral("Ada's LAN")});
    Mac::ctl(QStringList{QStringLiteral("service"), QStringLiteral("remove"), QStringLiteral("Ada's LAN")});
    run(model().loadServices());
    EXPECT_EQ(model().selectedServices(), QSet<QString>{kWifi}) << "back to the default one";
}

TEST_F(DnsStep, Without_a_network_nothing_is_preselected)
{
    Mac::ctl(QStringLiteral("wifi off"));
    select({});
    run(model().loadServices());
    EXPECT_EQ(model().services().size(), 2);
    EXPECT_TRUE(model().selectedServices().isEmpty());
    run(model().applyDNS());
    EXPECT_TEXT(model().dnsMessage(), "Pick at least one network service.");
    expectUntouched();
}

TEST_F(DnsStep, While_pihole_does_not_answer_nothing_is_asked_or_changed)
{
    model().setDnsMessage(QStringLiteral("old"));
    Mac::ctl(QStringLiteral("container stop"));
    run(model().refreshStatus(Stats::Leave));
    run(model().applyDNS());
    EXPECT_TEXT(model().dnsMessage(),
                "Pi-hole is not answering yet, so the Mac's DNS was not changed. Finish step 4 first.");
    EXPECT_TRUE(user.alerts().isEmpty());
    expectUntouched();
}

TEST_F(DnsStep, A_pihole_that_ends_while_the_question_is_open_gets_no_mac)
{
    model().setPiholeOnly(true);
    user.beforeAnswering([] { Mac::ctl(QStringLiteral("container stop")); });
    run(model().applyDNS());
    EXPECT_EQ(user.alerts().size(), 1);
    EXPECT_TEXT(model().dnsMessage(),
                "Pi-hole is not answering yet, so the Mac's DNS was not changed. Finish step 4 first.");
    expectUntouched();
}

TEST_F(DnsStep, Nothing_stops_pihole_while_the_question_is_open)
{
    user.beforeAnswering([this] { run(model().stopPihole()); });
    run(model().applyDNS());
    EXPECT_TEXT(model().dnsMessage(), "DNS changed.");
    EXPECT_FALSE(Mac::calls(QStringLiteral("docker")).contains(QStringLiteral("stop pihole")));
    EXPECT_TEXT(model().startMessage(), "Not now: answer the open question first.");
}

TEST_F(DnsStep, Servers_that_were_set_after_the_list_was_read_are_asked_about_and_saved)
{
    Mac::ctl(QStringLiteral("servers Wi-Fi 9.9.9.9"));
    run(model().applyDNS());
    ASSERT_EQ(user.alerts().size(), 1);
    EXPECT_TRUE(user.alerts().first().text.startsWith(QStringLiteral("• Wi-Fi: 9.9.9.9  ->  ")));
    EXPECT_EQ(savedServers(kWifi), QStringList{QStringLiteral("9.9.9.9")});
}

TEST_F(DnsStep, Servers_that_were_set_while_the_question_was_open_are_saved)
{
    user.beforeAnswering([] { Mac::ctl(QStringLiteral("servers Wi-Fi 9.9.9.9")); });
    run(model().applyDNS());
    EXPECT_EQ(savedServers(kWifi), QStringList{QStringLiteral("9.9.9.9")});
}

TEST_F(DnsStep, The_question_tells_what_each_service_has_and_will_get)
{
    Mac::ctl(QStringList{QStringLiteral("service"), QStringLiteral("add"), QStringLiteral("Ada's LAN")});
    Mac::ctl(QStringList{QStringLiteral("servers"), QStringLiteral("Ada's LAN"), QStringLiteral("9.9.9.9"),
                         QStringLiteral("8.8.8.8")});
    run(model().loadServices());
    select({QStringLiteral("Ada's LAN"), kWifi});
    model().setDnsMessage(QStringLiteral("old"));
    user.cancels();
    run(model().applyDNS());
    ASSERT_EQ(user.alerts().size(), 1);
    const Alert alert = user.alerts().first();
    EXPECT_TEXT(alert.title, "Change DNS on 2 network service(s)?");
    EXPECT_TEXT(alert.text,
                "• Wi-Fi: Automatic  ->  127.0.0.1, then 1.1.1.1\n"
                "• Ada's LAN: 9.9.9.9, 8.8.8.8  ->  127.0.0.1, then 1.1.1.1\n"
                "\n"
                "Your old values are saved first in dns-backup.json (Application Support/Corvane). The DNS cache is "
                "flushed. macOS will ask for your administrator password once.");
    EXPECT_TEXT(alert.accept, "Change DNS");
    EXPECT_TEXT(alert.reject, "Cancel");
    EXPECT_EQ(alert.style, Alert::Style::Informational);
    EXPECT_TEXT(model().dnsMessage(), "") << "cleared, and nothing else";
    expectUntouched();
}

TEST_F(DnsStep, Pihole_alone_is_warned_about)
{
    model().setPiholeOnly(true);
    user.cancels();
    run(model().applyDNS());
    EXPECT_TEXT(user.alerts().value(0).text,
                "• Wi-Fi: Automatic  ->  127.0.0.1 only\n"
                "\n"
                "Your old values are saved first in dns-backup.json (Application Support/Corvane). The DNS cache is "
                "flushed. macOS will ask for your administrator password once.\n"
                "\n"
                "Pi-hole only: if Pi-hole stops, this Mac has no DNS until you restore your old settings.");
    user.agrees();
    run(model().applyDNS());
    EXPECT_EQ(serversOf(kWifi), QStringList{QStringLiteral("127.0.0.1")});
    EXPECT_TEXT(model().dnsMessage(), "DNS changed.");
}

TEST_F(DnsStep, A_change_is_proved_by_three_lookups_in_piholes_log)
{
    run(model().runPiholeTests(Wait::No));
    const auto before = clock.waited();
    run(model().applyDNS());
    EXPECT_TEXT(model().dnsMessage(), "DNS changed.");
    EXPECT_EQ(serversOf(kWifi), kBoth);
    EXPECT_EQ(model().services()[0].servers, kBoth) << "the list is read again";
    EXPECT_EQ(Mac::prompts(), 1);
    EXPECT_TEXT(model().systemTestDetail(), kAllFound);
    EXPECT_LT(clock.waited() - before, milliseconds(2 * 1500)) << "one look was enough";
    EXPECT_TRUE(passed(model().outcomes(), kSystem));
    EXPECT_TEXT(model().outcomes().value(kSystem).summary, kAllFound);
    EXPECT_TRUE(model().setupSucceeded());
    EXPECT_TRUE(settings.value(QStringLiteral("wizardFinished")).toBool());
    EXPECT_TRUE(model().showWizard()) << "the wizard is left by its user";
    EXPECT_EQ(model().icon(), MenuIcon::Active);
    EXPECT_TRUE(quiet());
}

TEST_F(DnsStep, Without_a_passed_pihole_test_the_setup_has_not_succeeded)
{
    run(model().applyDNS());
    EXPECT_TRUE(passed(model().outcomes(), kSystem));
    EXPECT_FALSE(model().setupSucceeded());
    EXPECT_FALSE(settings.value(QStringLiteral("wizardFinished")).toBool());
}

TEST_F(DnsStep, Only_the_selected_services_change_and_with_one_prompt)
{
    Mac::ctl(QStringList{QStringLiteral("service"), QStringLiteral("add"), QStringLiteral("Ada's \"LAN\" $HOME `id`")});
    run(model().loadServices());
    select({kWifi, QStringLiteral("Ada's \"LAN\" $HOME `id`")});
    run(model().applyDNS());
    EXPECT_TEXT(model().dnsMessage(), "DNS changed.");
    EXPECT_EQ(serversOf(QStringLiteral("Ada's \"LAN\" $HOME `id`")), kBoth);
    EXPECT_EQ(serversOf(QStringLiteral("Thunderbolt Bridge")), QStringList());
    EXPECT_EQ(Mac::prompts(), 1);
}

TEST_F(DnsStep, A_backup_that_cannot_be_saved_stops_the_change)
{
    ASSERT_TRUE(QDir().mkpath(DNSConfigurator::backupFile() + QStringLiteral("/in the way")));
    run(model().applyDNS());
    const QString start = QStringLiteral("The old settings could not be saved, so nothing was changed: ");
    EXPECT_TRUE(model().dnsMessage().startsWith(start)) << model().dnsMessage().toStdString();
    EXPECT_GT(model().dnsMessage().size(), start.size()) << "the system's reason follows";
    EXPECT_EQ(Mac::prompts(), 0);
    EXPECT_EQ(serversOf(kWifi), QStringList());
    EXPECT_TRUE(quiet());
}

TEST_F(DnsStep, The_old_servers_are_on_disk_before_the_prompt)
{
    Mac::ctl(QStringList{QStringLiteral("servers"), kWifi, QStringLiteral("9.9.9.9")});
    run(model().loadServices());
    Mac::ctl(QStringLiteral("prompt cancel once"));
    run(model().applyDNS());
    QFile file(DNSConfigurator::backupFile());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_TRUE(file.readAll().contains("9.9.9.9"));
    EXPECT_EQ(serversOf(kWifi), QStringList{QStringLiteral("9.9.9.9")});
}

TEST_F(DnsStep, A_mac_that_does_not_keep_the_servers_is_named)
{
    Mac::ctl(QStringLiteral("keeps Wi-Fi no"));
    run(model().applyDNS());
    EXPECT_TEXT(model().dnsMessage(), "macOS did not keep the new DNS servers for Wi-Fi (it shows: Automatic).");
    Mac::ctl(QStringLiteral("keeps Wi-Fi 127.0.0.1"));
    run(model().applyDNS());
    EXPECT_TEXT(model().dnsMessage(), "macOS did not keep the new DNS servers for Wi-Fi (it shows: 127.0.0.1).");
    EXPECT_EQ(model().services()[0].servers, QStringList{QStringLiteral("127.0.0.1")});
    EXPECT_FALSE(model().outcomes().contains(kSystem)) << "no test after a failed change";
    EXPECT_TRUE(quiet());
}

TEST_F(DnsStep, A_service_that_has_gone_meanwhile_stops_the_change_with_macos_own_words)
{
    select({kWifi, QStringLiteral("Thunderbolt Bridge")});
    user.beforeAnswering([] {
        Mac::ctl(QStringList{QStringLiteral("service"), QStringLiteral("remove"), QStringLiteral("Wi-Fi")});
    });
    run(model().applyDNS());
    EXPECT_TRUE(model().dnsMessage().contains(QStringLiteral("Wi-Fi is not a recognized network service")))
        << model().dnsMessage().toStdString();
    EXPECT_EQ(serversOf(QStringLiteral("Thunderbolt Bridge")), QStringList()) << "the chain stops at the first failure";
    EXPECT_EQ(model().services().size(), 1) << "the list is read again";
    EXPECT_TRUE(quiet());
}

TEST_F(DnsStep, A_change_with_wifi_off_is_made_and_the_test_says_that_it_is_not_used)
{
    Mac::ctl(QStringLiteral("wifi off"));
    run(model().applyDNS());
    EXPECT_TEXT(model().dnsMessage(), "DNS changed.");
    EXPECT_EQ(serversOf(kWifi), kBoth);
    EXPECT_TEXT(model().systemTestDetail(),
                std::string("0 of 3 test lookups through the system resolver showed up in Pi-hole's log.") + kNotFirst);
    EXPECT_FALSE(passed(model().outcomes(), kSystem));
    EXPECT_TRUE(quiet());
}

TEST_F(DnsStep, A_vpn_in_front_fails_the_test_with_its_reason)
{
    Mac::ctl(QStringLiteral("vpn on 10.8.0.1"));
    const auto before = clock.waited();
    run(model().applyDNS());
    EXPECT_TEXT(model().systemTestDetail(),
                std::string("0 of 3 test lookups through the system resolver showed up in Pi-hole's log.") + kNotFirst);
    EXPECT_GE(clock.waited() - before, milliseconds(3 * 1500)) << "three looks";
    EXPECT_LT(clock.waited() - before, milliseconds(4 * 1500)) << "and no more";
    EXPECT_FALSE(passed(model().outcomes(), kSystem));
    EXPECT_EQ(model().icon(), MenuIcon::NotUsed);
}

TEST_F(DnsStep, A_model_that_goes_away_at_any_moment_of_a_change_ends_it_quietly)
{
    for (int milliseconds : {0, 5, 20, 60, 150}) {
        Mac::reset(QStringLiteral("running"));
        relaunch();
        run(model().refreshStatus(Stats::Leave));
        run(model().loadServices());
        launch(model().applyDNS());
        bool passedBy = false;
        QTimer::singleShot(milliseconds, &user, [&passedBy] { passedBy = true; });
        waitFor([&passedBy] { return passedBy; }, "the moment");
        relaunch();
        EXPECT_TRUE(quiet());
    }
}

} // namespace corvane::test
