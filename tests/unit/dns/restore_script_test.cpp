#include "dns/admin_script.h"
#include "dns/dns_configurator.h"
#include "dns/restore_script.h"
#include "tests/support/file_trouble.h"
#include "tests/support/home_folder.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <sys/stat.h>

namespace corvane::test {
namespace {

const QString kWifi = QStringLiteral("Wi-Fi");

DNSBackup::Entries entries(const QString &service, const QStringList &servers) { return {{service, servers}}; }

/// What the script does with a shell in which every program of macOS tells what it was given.
QByteArray playedOn(QByteArray script, const QByteArray &osascript)
{
    script.replace("/usr/bin/osascript", "osascript");
    script.replace("/usr/sbin/networksetup", "networksetup");
    script.replace("/usr/bin/dscacheutil", "true");
    script.replace("/usr/bin/killall", "true");
    const QByteArray tools = "networksetup() { printf '[%s]' \"$@\"; printf '\\n'; }\n"
                             "osascript() { " +
                             osascript + "; }\n";
    QProcess shell;
    QTemporaryDir folder;
    shell.setWorkingDirectory(folder.path());
    shell.start(QStringLiteral("/bin/sh"), {QStringLiteral("-c"), QString::fromUtf8(tools + script)});
    EXPECT_TRUE(shell.waitForFinished(60'000));
    EXPECT_EQ(shell.readAllStandardError().toStdString(), "");
    EXPECT_TRUE(QDir(folder.path()).isEmpty());
    return shell.readAllStandardOutput() + "status " + QByteArray::number(shell.exitCode());
}

class RestoreScriptFile : public testing::Test {
protected:
    HomeFolder m_home;

    [[nodiscard]] static QByteArray content()
    {
        QFile file(RestoreScript::file());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    [[nodiscard]] static mode_t mode()
    {
        struct stat facts = {};
        EXPECT_EQ(::stat(QFile::encodeName(RestoreScript::file()).constData(), &facts), 0);
        return facts.st_mode & 07777;
    }
    /// Whether the script restores exactly what the backup file holds.
    static void expectInStep() { EXPECT_EQ(content(), RestoreScript::text(DNSBackup::load())); }
};

TEST(RestoreScriptText, Holds_the_very_commands_of_a_restore)
{
    const QString text = QString::fromUtf8(RestoreScript::text(
        {{kWifi, {QStringLiteral("9.9.9.9"), QStringLiteral("8.8.8.8")}}, {QStringLiteral("LAN"), {}}}));
    const QStringList commands{AdminScript::setCommand(kWifi, {QStringLiteral("9.9.9.9"), QStringLiteral("8.8.8.8")}),
                               AdminScript::setCommand(QStringLiteral("LAN"), {})};
    EXPECT_TRUE(text.contains(AdminScript::quoted(AdminScript::appleScript(AdminScript::eachOf(commands)))));
    EXPECT_TRUE(text.startsWith(QStringLiteral("#!/bin/sh\n")));
}

TEST(RestoreScriptText, Tells_what_it_puts_back_and_what_macOS_has_then)
{
    const QByteArray script = RestoreScript::text(
        {{kWifi, {QStringLiteral("9.9.9.9"), QStringLiteral("8.8.8.8")}}, {QStringLiteral("LAN"), {}}});
    EXPECT_EQ(playedOn(script, "true").toStdString(),
              "These DNS servers are put back:\n"
              "  Wi-Fi: 9.9.9.9, 8.8.8.8\n"
              "  LAN: Automatic\n"
              "\n"
              "macOS asks for an administrator's password now. Cancel changes nothing.\n"
              "\n"
              "What macOS has now:\n"
              "  Wi-Fi:\n"
              "[-getdnsservers][Wi-Fi]\n"
              "  LAN:\n"
              "[-getdnsservers][LAN]\n"
              "\n"
              "Done: your old DNS servers are back.\n"
              "status 0");
}

TEST(RestoreScriptText, Says_so_and_fails_when_macOS_refuses)
{
    const QByteArray said = playedOn(RestoreScript::text(entries(kWifi, {})), "return 1");
    EXPECT_TRUE(said.endsWith("Not everything was put back. Why stands above. You can run this file again at any "
                              "time.\nstatus 1"))
        << said.constData();
}

TEST(RestoreScriptText, Goes_on_with_the_other_services_when_one_cannot_be_set)
{
    const QString script =
        AdminScript::eachOf({QStringLiteral("echo 1"), QStringLiteral("false"), QStringLiteral("echo 3")});
    QProcess shell;
    shell.start(QStringLiteral("/bin/sh"), {QStringLiteral("-c"), script});
    ASSERT_TRUE(shell.waitForFinished(60'000));
    EXPECT_EQ(shell.readAllStandardOutput(), "1\n3\n");
    EXPECT_EQ(shell.exitCode(), 1);
}

TEST(RestoreScriptText, Prints_nothing_that_a_terminal_would_act_on)
{
    const QByteArray said =
        playedOn(RestoreScript::text(entries(QStringLiteral("a\x1b[2Jb\x07"), {})), "true").split('\n').value(1);
    EXPECT_EQ(said, "  ab: Automatic");
}

TEST(RestoreScriptText, Leaves_out_a_name_that_no_shell_can_carry)
{
    const DNSBackup::Entries two{{QStringLiteral("a") + QChar(u'\0'), {}}, {kWifi, {}}};
    EXPECT_EQ(RestoreScript::text(two), RestoreScript::text(entries(kWifi, {})));
}

TEST_F(RestoreScriptFile, Stands_beside_the_backup_and_only_its_user_may_run_it)
{
    ASSERT_TRUE(DNSBackup::store(entries(kWifi, {QStringLiteral("9.9.9.9")})));
    EXPECT_EQ(RestoreScript::file(),
              QFileInfo(DNSBackup::file()).dir().filePath(QStringLiteral("Restore DNS.command")));
    EXPECT_EQ(mode(), 0700U);
    expectInStep();
}

TEST_F(RestoreScriptFile, Follows_every_later_save)
{
    ASSERT_TRUE(DNSBackup::store(entries(kWifi, {})));
    QFile::setPermissions(RestoreScript::file(), QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    ASSERT_TRUE(DNSConfigurator::saveBackup({{QStringLiteral("LAN"), {QStringLiteral("8.8.8.8")}}}));
    EXPECT_EQ(DNSBackup::load().size(), 2);
    EXPECT_EQ(mode(), 0700U) << "and can be run again";
    expectInStep();
}

TEST_F(RestoreScriptFile, Something_in_its_place_stops_the_save_and_keeps_the_backup)
{
    ASSERT_TRUE(QDir().mkpath(RestoreScript::file()));
    EXPECT_FALSE(DNSBackup::store(entries(kWifi, {})));
    EXPECT_FALSE(QFile::exists(DNSBackup::file()));
}

TEST_F(RestoreScriptFile, Something_in_the_place_of_the_backup_leaves_no_script_behind)
{
    ASSERT_TRUE(QDir().mkpath(DNSBackup::file()));
    EXPECT_FALSE(DNSBackup::store(entries(kWifi, {})));
    EXPECT_FALSE(QFile::exists(RestoreScript::file()));
}

TEST_F(RestoreScriptFile, A_full_disk_keeps_both_as_they_were)
{
    ASSERT_TRUE(DNSBackup::store(entries(kWifi, {QStringLiteral("9.9.9.9")})));
    const QByteArray before = content();
    // Room for neither; room for the backup alone.
    for (const rlim_t room : {rlim_t(40), rlim_t(before.size()) - 1}) {
        const FileSizeLimit limit(room);
        EXPECT_FALSE(DNSBackup::store(entries(QStringLiteral("LAN").repeated(30), {})));
        EXPECT_EQ(content(), before);
        expectInStep();
    }
    EXPECT_EQ(mode(), 0700U);
    EXPECT_EQ(QFileInfo(DNSBackup::file()).dir().entryList(QDir::Files).size(), 2) << "and nothing beside them";
}

TEST_F(RestoreScriptFile, Is_written_for_servers_that_were_saved_without_it)
{
    EXPECT_EQ(RestoreScript::keep(), QString());
    ASSERT_TRUE(DNSBackup::store(entries(kWifi, {QStringLiteral("9.9.9.9")})));
    ASSERT_TRUE(QFile::remove(RestoreScript::file()));
    EXPECT_EQ(RestoreScript::keep(), RestoreScript::file());
    EXPECT_EQ(mode(), 0700U);
    expectInStep();
}

TEST_F(RestoreScriptFile, Is_left_alone_while_it_is_in_step_and_written_anew_when_it_is_not)
{
    ASSERT_TRUE(DNSBackup::store(entries(kWifi, {QStringLiteral("9.9.9.9")})));
    struct stat before = {};
    struct stat after = {};
    const QByteArray path = QFile::encodeName(RestoreScript::file());
    ASSERT_EQ(::stat(path.constData(), &before), 0);
    EXPECT_EQ(RestoreScript::keep(), RestoreScript::file());
    ASSERT_EQ(::stat(path.constData(), &after), 0);
    EXPECT_EQ(before.st_ino, after.st_ino);

    QFile file(RestoreScript::file());
    ASSERT_TRUE(file.open(QIODevice::Append));
    file.write("exit 0\n");
    file.close();
    EXPECT_EQ(RestoreScript::keep(), RestoreScript::file());
    expectInStep();
}

TEST_F(RestoreScriptFile, Goes_with_the_backup_but_outlives_one_that_is_damaged)
{
    ASSERT_TRUE(DNSBackup::store(entries(kWifi, {})));
    const QByteArray before = content();
    QFile backup(DNSBackup::file());
    ASSERT_TRUE(backup.open(QIODevice::WriteOnly | QIODevice::Truncate));
    backup.write("[{\"ser");
    backup.close();
    EXPECT_EQ(RestoreScript::keep(), RestoreScript::file());
    EXPECT_EQ(content(), before);
    ASSERT_TRUE(backup.remove());
    EXPECT_EQ(RestoreScript::keep(), QString());
    EXPECT_FALSE(QFile::exists(RestoreScript::file()));
}

} // namespace
} // namespace corvane::test
