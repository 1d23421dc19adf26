#include "dns/dns_backup.h"
#include "dns/restore_script.h"
#include "tests/flows/in_state.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>

namespace corvane::test {

namespace {

const QString kWifi = QStringLiteral("Wi-Fi");
const QString kBridge = QStringLiteral("Thunderbolt Bridge");
const QStringList kOld{QStringLiteral("9.9.9.9"), QStringLiteral("8.8.8.8")};
const QStringList kPihole{QStringLiteral("127.0.0.1"), QStringLiteral("1.1.1.1")};

QStringList serversOf(const QString &service)
{
    const QJsonArray services = Mac::ctl(QStringLiteral("services")).toArray();
    for (const QJsonValue &each : services) {
        if (each[QLatin1String("name")].toString() != service) continue;
        return each[QLatin1String("servers")].toVariant().toStringList();
    }
    return {QStringLiteral("no such service")};
}

void giveServers(const QString &service, const QStringList &servers)
{
    Mac::ctl(QStringList{QStringLiteral("servers"), service} + servers);
}

/// The script as Finder runs it: by itself, from the home folder.
struct ScriptRun {
    ScriptRun()
    {
        QProcess process;
        process.setWorkingDirectory(QStringLiteral("/"));
        process.start(RestoreScript::file(), QStringList());
        EXPECT_TRUE(process.waitForFinished(60'000));
        said = QString::fromUtf8(process.readAllStandardOutput());
        complaint = QString::fromUtf8(process.readAllStandardError());
        status = process.exitCode();
    }

    QString said;
    QString complaint;
    int status = -1;
};

/// A Mac whose DNS Corvane has changed.
class ScriptFlow : public Running {
protected:
    ScriptFlow()
    {
        Mac::ctl(QStringLiteral("pihole log-delay 0"));
        QFile::remove(DNSBackup::file());
        QFile::remove(RestoreScript::file());
        run(model().refreshStatus(Stats::Leave));
    }

    void apply(const QSet<QString> &names)
    {
        run(model().loadServices());
        model().setSelectedServices(names);
        run(model().applyDNS());
    }
};

} // namespace

TEST_F(ScriptFlow, A_change_of_DNS_leaves_a_script_that_undoes_it_without_Corvane_and_Colima)
{
    giveServers(kWifi, kOld);
    EXPECT_TEXT(model().restoreScript(), "");
    apply({kWifi});
    EXPECT_EQ(model().restoreScript(), RestoreScript::file());
    ASSERT_EQ(serversOf(kWifi), kPihole);

    quit();
    for (const char *tool : {"brew", "colima", "docker"})
        Mac::ctl(QStringLiteral("fault %1 vanish").arg(QLatin1String(tool)));
    const ScriptRun script;
    EXPECT_EQ(script.status, 0);
    EXPECT_EQ(serversOf(kWifi), kOld);
    EXPECT_EQ(Mac::prompts(), 2) << "for the change, and for the way back";
    EXPECT_TRUE(script.said.contains(QStringLiteral("  Wi-Fi: 9.9.9.9, 8.8.8.8\n"))) << script.said.toStdString();
    EXPECT_TRUE(script.said.contains(QStringLiteral("  Wi-Fi:\n9.9.9.9\n8.8.8.8\n"))) << script.said.toStdString();
    EXPECT_TRUE(script.said.endsWith(QStringLiteral("Done: your old DNS servers are back.\n")));
}

TEST_F(ScriptFlow, Services_with_any_name_get_their_own_servers_back)
{
    const QStringList names{QStringLiteral("Ada's \"LAN\" $HOME `id` \\ 🙂"), QStringLiteral("; touch /tmp/x &"),
                            QStringLiteral("two\nlines"), QStringLiteral("%s \\n 'a' ''"),
                            QStringLiteral("Büro – 日本")};
    DNSBackup::Entries saved;
    for (qsizetype i = 0; i < names.size(); ++i) {
        Mac::ctl(QStringList{QStringLiteral("service"), QStringLiteral("add"), names[i]});
        giveServers(names[i], kPihole);
        saved += {names[i], {QStringLiteral("9.9.9.%1").arg(i + 1)}};
    }
    ASSERT_TRUE(DNSBackup::store(saved));
    const ScriptRun script;
    EXPECT_EQ(script.status, 0) << script.said.toStdString();
    for (const DNSBackupEntry &entry : saved)
        EXPECT_EQ(serversOf(entry.service), entry.servers) << entry.service.toStdString();
    EXPECT_EQ(Mac::prompts(), 1) << "for all of them";
    EXPECT_FALSE(QFile::exists(QStringLiteral("/tmp/x")));
}

TEST_F(ScriptFlow, A_service_that_is_gone_does_not_keep_the_others_from_their_servers)
{
    giveServers(kBridge, kOld);
    apply({kWifi, kBridge});
    Mac::ctl(QStringList{QStringLiteral("service"), QStringLiteral("remove"), kWifi});
    const ScriptRun script;
    EXPECT_NE(script.status, 0);
    EXPECT_EQ(serversOf(kBridge), kOld);
    EXPECT_TRUE(script.said.contains(QStringLiteral("Wi-Fi is not a recognized network service")));
    EXPECT_TRUE(script.said.contains(QStringLiteral("Not everything was put back. Why stands above.")));
}

TEST_F(ScriptFlow, A_cancelled_prompt_changes_nothing_and_is_told)
{
    apply({kWifi});
    Mac::ctl(QStringLiteral("prompt cancel once"));
    const ScriptRun script;
    EXPECT_NE(script.status, 0);
    EXPECT_EQ(serversOf(kWifi), kPihole);
    EXPECT_TRUE(script.said.contains(QStringLiteral("Not everything was put back. Why stands above.")));
    EXPECT_TRUE(script.complaint.contains(u"-128"));
}

TEST_F(ScriptFlow, A_change_that_cannot_be_saved_whole_is_not_made)
{
    ASSERT_TRUE(QDir().mkpath(RestoreScript::file()));
    apply({kWifi});
    EXPECT_TRUE(model().dnsMessage().startsWith(
        QStringLiteral("The old settings could not be saved, so nothing was changed: ")))
        << model().dnsMessage().toStdString();
    EXPECT_FALSE(QFile::exists(DNSBackup::file()));
    EXPECT_EQ(Mac::prompts(), 0);
    ASSERT_TRUE(QDir().rmdir(RestoreScript::file()));
}

TEST_F(ScriptFlow, The_next_start_writes_a_script_that_is_missing_and_shows_it)
{
    apply({kWifi});
    ASSERT_TRUE(QFile::remove(RestoreScript::file()));
    relaunch();
    EXPECT_TEXT(model().restoreScript(), "");
    launch(model().bootstrap());
    waitFor([this] { return !model().restoreScript().isEmpty(); }, "the script is there");
    EXPECT_TRUE(QFileInfo(RestoreScript::file()).isExecutable());
}

} // namespace corvane::test
