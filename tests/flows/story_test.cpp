#include "tests/flows/in_state.h"
#include "tests/story/story.h"

#include <QFile>
#include <QProcess>

namespace corvane::test {

namespace {

QByteArray printed(const char *tool, const QStringList &args)
{
    QProcess process;
    process.start(QString::fromLatin1(tool), args);
    EXPECT_TRUE(process.waitForFinished());
    return QByteArray(tool) + ' ' + args.join(u' ').toUtf8() + '\n' + process.readAllStandardOutput();
}

/// Everything about this Mac's DNS, in the tools' own words.
QByteArray dnsOfThisMac()
{
    QByteArray text = printed("/usr/sbin/scutil", {QStringLiteral("--dns")});
    text += printed("/usr/sbin/networksetup", {QStringLiteral("-listallnetworkservices")});
    text += printed("/usr/sbin/networksetup", {QStringLiteral("-listnetworkserviceorder")});
    text += printed("/sbin/route", {QStringLiteral("-n"), QStringLiteral("get"), QStringLiteral("default")});
    for (const char *service : {"Wi-Fi", "Thunderbolt Bridge", "Ada's LAN"})
        text += printed("/usr/sbin/networksetup", {QStringLiteral("-getdnsservers"), QString::fromLatin1(service)});
    QFile resolvConf(QStringLiteral("/etc/resolv.conf"));
    EXPECT_TRUE(resolvConf.open(QIODevice::ReadOnly));
    return text + resolvConf.readAll();
}

class TheStory : public Homebrew {
protected:
    TheStory()
    {
        Mac::ctl(QStringLiteral("pihole log-delay 0"));
        Mac::ctl(QStringList{QStringLiteral("service"), QStringLiteral("add"), QStringLiteral("Ada's LAN")});
    }

    void tell()
    {
        const Story story(model());
        for (const Story::Step &step : story.steps()) {
            step.act();
            ASSERT_TEXT(step.problem(), "") << step.text.toStdString();
        }
    }
};

} // namespace

TEST_F(TheStory, From_a_mac_with_homebrew_to_a_protected_one_and_back_to_the_very_same_settings)
{
    const QByteArray before = dnsOfThisMac();
    tell();
    EXPECT_EQ(dnsOfThisMac().toStdString(), before.toStdString());
    EXPECT_EQ(Mac::prompts(), 2) << "one for the change, one for the restore";
    EXPECT_TRUE(quiet());
}

TEST_F(TheStory, Servers_set_by_hand_come_back_in_their_order)
{
    Mac::ctl(QStringList{QStringLiteral("servers"), QStringLiteral("Wi-Fi"), QStringLiteral("9.9.9.9"),
                         QStringLiteral("192.168.1.1")});
    const QByteArray before = dnsOfThisMac();
    ASSERT_TRUE(before.contains("9.9.9.9"));
    tell();
    EXPECT_EQ(dnsOfThisMac().toStdString(), before.toStdString());
}

} // namespace corvane::test
