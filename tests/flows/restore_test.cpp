#include "dns/dns_backup.h"
#include "dns/dns_configurator.h"
#include "tests/flows/in_state.h"

#include <QDir>
#include <QFile>

#include <random>

namespace corvane::test {

namespace {

const QString kWifi = QStringLiteral("Wi-Fi");
const QString kSystem = QStringLiteral("system");

QMap<QString, QStringList> allServers()
{
    QMap<QString, QStringList> servers;
    const QJsonArray services = Mac::ctl(QStringLiteral("services")).toArray();
    for (const QJsonValue &each : services)
        servers.insert(each[QLatin1String("name")].toString(),
                       each[QLatin1String("servers")].toVariant().toStringList());
    return servers;
}

void giveServers(const QString &service, const QStringList &servers)
{
    Mac::ctl(QStringList{QStringLiteral("servers"), service} + servers);
}

/// networksetup does not tell the servers of Wi-Fi.
void failReadingWifi(const QStringList &when)
{
    const QStringList fault{QStringLiteral("fault"),  QStringLiteral("networksetup"),
                            QStringLiteral("fail"),   QStringLiteral("4"),
                            QStringLiteral("--when"), QStringLiteral("*getdnsservers Wi-Fi")};
    Mac::ctl(fault + when);
}

/// A Mac whose Pi-hole answers, before any change.
class Restoring : public Running {
protected:
    Restoring()
    {
        Mac::ctl(QStringLiteral("pihole log-delay 0"));
        run(model().refreshStatus(Stats::Leave));
        run(model().loadServices());
    }

    void apply(const QSet<QString> &names)
    {
        run(model().loadServices());
        model().setSelectedServices(names);
        run(model().applyDNS());
    }
};

} // namespace

TEST_F(Restoring, The_old_servers_are_put_back_with_one_prompt)
{
    giveServers(kWifi, {QStringLiteral("9.9.9.9"), QStringLiteral("8.8.8.8")});
    apply({kWifi});
    ASSERT_TRUE(passed(model().outcomes(), kSystem));
    EXPECT_TEXT(model().dnsMessage(), "DNS changed.");
    run(model().restoreOldSettings());
    EXPECT_TEXT(model().dnsMessage(), "") << "it is not true any more";
    ASSERT_EQ(user.alerts().size(), 2);
    const Alert alert = user.alerts().last();
    EXPECT_TEXT(alert.title, "Restore my old DNS settings?");
    EXPECT_TEXT(alert.text, "The DNS servers saved before the wizard changed them will be put back. macOS will ask for "
                            "your administrator password.");
    EXPECT_TEXT(alert.accept, "Restore");
    EXPECT_TEXT(alert.reject, "Cancel");
    EXPECT_EQ(Mac::prompts(), 2);
    EXPECT_EQ(allServers()[kWifi], (QStringList{QStringLiteral("9.9.9.9"), QStringLiteral("8.8.8.8")}));
    EXPECT_TEXT(model().notice(), "Your old DNS settings are back.");
    EXPECT_FALSE(model().outcomes().contains(kSystem)) << "it no longer holds";
    EXPECT_EQ(model().services()[0].servers, allServers()[kWifi]) << "the list is read again";
    EXPECT_TRUE(QFile::exists(DNSConfigurator::backupFile())) << "the backup outlives the restore";
    EXPECT_TRUE(quiet());
}

TEST_F(Restoring, A_cancelled_question_leaves_everything_as_it_was)
{
    apply({kWifi});
    const auto before = allServers();
    user.cancels();
    run(model().restoreOldSettings());
    EXPECT_EQ(Mac::prompts(), 1);
    EXPECT_EQ(allServers(), before);
    EXPECT_TEXT(model().dnsMessage(), "DNS changed.");
    EXPECT_TRUE(passed(model().outcomes(), kSystem));
    EXPECT_TEXT(model().notice(), "");
}

TEST_F(Restoring, With_nothing_saved_services_at_pihole_become_automatic)
{
    giveServers(QStringLiteral("Thunderbolt Bridge"), {QStringLiteral("1.1.1.1"), QStringLiteral("127.0.0.1")});
    giveServers(kWifi, {QStringLiteral("9.9.9.9")});
    run(model().restoreOldSettings());
    EXPECT_TEXT(user.alerts().value(0).text,
                "No saved settings were found. Network services that point at Pi-hole will be set back to Automatic. "
                "macOS will ask for your administrator password.");
    EXPECT_EQ(allServers()[QStringLiteral("Thunderbolt Bridge")], QStringList());
    EXPECT_EQ(allServers()[kWifi], QStringList{QStringLiteral("9.9.9.9")});
    EXPECT_EQ(Mac::prompts(), 1);
}

TEST_F(Restoring, With_nothing_to_restore_no_prompt_is_shown)
{
    run(model().restoreOldSettings());
    EXPECT_TEXT(model().dnsMessage(),
                "There is nothing to restore: no saved settings and no service points at Pi-hole.");
    EXPECT_EQ(Mac::prompts(), 0);
    EXPECT_TEXT(model().notice(), "");
    EXPECT_TRUE(quiet());
}

TEST_F(Restoring, A_damaged_backup_counts_as_none)
{
    apply({kWifi});
    QFile file(DNSConfigurator::backupFile());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write("[{\"service\": \"Wi-Fi\", \"serv");
    file.close();
    run(model().restoreOldSettings());
    EXPECT_TRUE(user.alerts().last().text.startsWith(QStringLiteral("No saved settings were found.")));
    EXPECT_EQ(allServers()[kWifi], QStringList());
}

TEST_F(Restoring, A_service_that_is_gone_is_named_and_the_others_are_restored)
{
    const QString bridge = QStringLiteral("Thunderbolt Bridge");
    giveServers(bridge, {QStringLiteral("9.9.9.9")});
    apply({kWifi, bridge});
    Mac::ctl(QStringList{QStringLiteral("service"), QStringLiteral("remove"), kWifi});
    run(model().restoreOldSettings());
    EXPECT_TEXT(model().dnsMessage(), "Not on this Mac any more: Wi-Fi. The old servers stay saved.");
    EXPECT_TEXT(model().notice(), "Your old DNS settings are back.");
    EXPECT_EQ(allServers()[bridge], QStringList{QStringLiteral("9.9.9.9")});
    EXPECT_EQ(DNSBackup::load().size(), 2) << "both entries are kept";
    EXPECT_EQ(Mac::prompts(), 2);
    EXPECT_TRUE(quiet());
}

TEST_F(Restoring, A_restore_that_stops_half_way_says_what_it_changed)
{
    const QString bridge = QStringLiteral("Thunderbolt Bridge");
    apply({kWifi, bridge});
    Mac::ctl(QStringLiteral("fault networksetup fail 4 --at 2 --when *setdnsservers*"));
    run(model().restoreOldSettings());
    EXPECT_TRUE(
        model().dnsMessage().endsWith(QStringLiteral("\nChanged before that: ") + DNSBackup::load()[0].service + u'.'))
        << model().dnsMessage().toStdString();
    EXPECT_TEXT(model().notice(), "");
    EXPECT_TRUE(model().outcomes().contains(kSystem)) << "the outcome stays when the restore fails";
}

TEST_F(Restoring, Servers_that_could_not_be_read_for_the_list_are_read_again_before_the_question)
{
    giveServers(kWifi, {QStringLiteral("9.9.9.9")});
    failReadingWifi({QStringLiteral("--at"), QStringLiteral("1")});
    apply({kWifi});
    EXPECT_TRUE(user.alerts().last().text.contains(QStringLiteral("Wi-Fi: 9.9.9.9")));
    run(model().restoreOldSettings());
    EXPECT_EQ(allServers()[kWifi], QStringList{QStringLiteral("9.9.9.9")});
}

TEST_F(Restoring, Servers_that_cannot_be_read_do_not_replace_what_was_saved)
{
    giveServers(kWifi, {QStringLiteral("9.9.9.9")});
    apply({kWifi});
    failReadingWifi({});
    apply({kWifi});
    Mac::ctl(QStringLiteral("fault clear"));
    run(model().restoreOldSettings());
    EXPECT_EQ(allServers()[kWifi], QStringList{QStringLiteral("9.9.9.9")});
}

TEST_F(Restoring, A_change_and_a_restore_never_run_at_once)
{
    apply({kWifi});
    Mac::ctl(QStringLiteral("fault osascript late 0.3 --at 1"));
    auto restoring = model().restoreOldSettings();
    waitFor([this] { return model().busy().contains(QStringLiteral("restoredns")); }, "the restore has begun");
    run(model().applyDNS());
    run(model().restoreOldSettings());
    EXPECT_EQ(user.alerts().size(), 2) << "one for each of the first two flows";
    run(std::move(restoring));
    EXPECT_EQ(Mac::prompts(), 2);
    EXPECT_EQ(allServers()[kWifi], QStringList());
}

TEST_F(Restoring, A_model_that_goes_away_during_a_restore_ends_it_quietly)
{
    apply({kWifi});
    launch(model().restoreOldSettings());
    waitFor([this] { return model().busy().contains(QStringLiteral("restoredns")); }, "the restore has begun");
    relaunch();
    EXPECT_TRUE(quiet());
}

/// What a person may do, in any order: apply to any services, restore, or give a service that is not at Pi-hole other
/// servers. `promised` is what a restore owes to every service that was ever changed.
class RandomUse {
public:
    RandomUse(AppModel &model, std::function<void(Flow<>)> run, unsigned seed)
        : m_model(model)
        , m_run(std::move(run))
        , m_random(seed)
    {}

    void step()
    {
        switch (m_random() % 6) {
        case 0:
            return restore();
        case 1:
            return changeByHand();
        default:
            return apply();
        }
    }

    void restore()
    {
        const bool anything = !m_promised.isEmpty() || anyAtPihole();
        const int before = Mac::prompts();
        m_run(m_model.restoreOldSettings());
        EXPECT_EQ(Mac::prompts() - before, anything ? 1 : 0);
        const auto servers = allServers();
        for (const QString &service : m_promised.keys())
            EXPECT_EQ(servers[service], m_promised[service]) << service.toStdString();
    }

private:
    static bool atPihole(const QStringList &servers) { return servers.value(0) == QStringLiteral("127.0.0.1"); }

    static bool anyAtPihole()
    {
        for (const QStringList &servers : allServers()) {
            if (servers.contains(QStringLiteral("127.0.0.1"))) return true;
        }
        return false;
    }

    QString anyService() { return allServers().keys()[static_cast<qsizetype>(m_random() % allServers().size())]; }

    void changeByHand()
    {
        static const QList<QStringList> choices{{},
                                                {QStringLiteral("9.9.9.9")},
                                                {QStringLiteral("8.8.8.8"), QStringLiteral("127.0.0.1")},
                                                {QStringLiteral("fe80::1%en0"), QStringLiteral("1.0.0.1")}};
        const QString service = anyService();
        if (!atPihole(allServers()[service]))
            giveServers(service, choices[static_cast<qsizetype>(m_random() % choices.size())]);
    }

    void apply()
    {
        m_run(m_model.loadServices());
        const auto before = allServers();
        QSet<QString> chosen{anyService(), anyService()};
        for (const QString &service : chosen) {
            if (!atPihole(before[service]))
                m_promised[service] = before[service];
            else if (!m_promised.contains(service))
                m_promised[service] = {};
        }
        m_model.setSelectedServices(chosen);
        m_model.setPiholeOnly(m_random() % 2 == 0);
        const int prompts = Mac::prompts();
        m_run(m_model.applyDNS());
        EXPECT_EQ(Mac::prompts() - prompts, 1);
        EXPECT_TEXT(m_model.dnsMessage(), "DNS changed.");
    }

    AppModel &m_model;
    std::function<void(Flow<>)> m_run;
    std::mt19937 m_random;
    QMap<QString, QStringList> m_promised;
};

TEST_F(Restoring, After_any_sequence_every_touched_service_gets_back_what_it_had)
{
    for (unsigned seed = 1; seed <= 6; ++seed) {
        SCOPED_TRACE(seed);
        Mac::reset(QStringLiteral("running"));
        Mac::ctl(QStringLiteral("pihole log-delay 0"));
        QFile::remove(DNSConfigurator::backupFile());
        Mac::ctl(
            QStringList{QStringLiteral("service"), QStringLiteral("add"), QStringLiteral("Ada's \"LAN\" \\ 🙂")});
        giveServers(QStringLiteral("Thunderbolt Bridge"), {QStringLiteral("127.0.0.1")});
        RandomUse use(
            model(), [this](Flow<> flow) { run(std::move(flow)); }, seed);
        for (int i = 0; i < 8; ++i)
            use.step();
        use.restore();
        if (HasFailure()) return;
    }
    EXPECT_TRUE(quiet());
}

} // namespace corvane::test
