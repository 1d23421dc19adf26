#include "runtime/pihole_controller.h"
#include "tests/flows/in_state.h"

#include <QDir>

namespace corvane::test {

namespace {

constexpr PiholeRule::Kind kKind = PiholeRule::Kind::DeniedPattern;
const QString kExpression = QStringLiteral("^chrome\\.cloudflare-dns\\.com$;reply=NXDOMAIN");

/// A Mac whose Pi-hole answers and whose services are loaded, as in the wizard's DNS step.
class BrowserRuleFlow : public Running {
protected:
    BrowserRuleFlow()
    {
        Mac::ctl(QStringLiteral("pihole log-delay 0"));
        Mac::ctl(QStringLiteral("pihole login-limit 1000")); // these tests log in faster than people
        run(model().refreshStatus(Stats::Leave));
        run(model().loadServices());
    }

    std::optional<PiholeRule> rule()
    {
        const auto found = QCoro::waitFor(model().api().rule(kKind, kExpression));
        EXPECT_TRUE(found);
        return found ? *found : std::nullopt;
    }

    /// What Pi-hole answers where browsers look for the secure DNS of 1.1.1.1.
    QString answer()
    {
        return QCoro::waitFor(PiholeController::ask(QStringLiteral("chrome.cloudflare-dns.com"))).status;
    }

    /// Name and checksum of every part of Pi-hole's own backup.
    QList<std::pair<QByteArray, QByteArray>> exported()
    {
        const auto archive = QCoro::waitFor(model().api().teleporterDownload());
        EXPECT_TRUE(archive);
        QList<std::pair<QByteArray, QByteArray>> parts;
        const QByteArray bytes = archive ? archive->bytes : QByteArray();
        for (qsizetype at = bytes.indexOf("PK\1\2"); at >= 0; at = bytes.indexOf("PK\1\2", at + 4)) {
            const auto length = static_cast<quint8>(bytes.at(at + 28));
            parts += {bytes.mid(at + 46, length), bytes.mid(at + 16, 4)};
        }
        return parts;
    }

    bool addUsersRule(bool enabled = true)
    {
        const PiholeRule mine{kKind, kExpression, QStringLiteral("mine"), enabled};
        const auto added = QCoro::waitFor(model().api().addRule(mine));
        return added && *added;
    }
};

} // namespace

TEST_F(BrowserRuleFlow, Comes_with_the_backup_server_and_says_whose_it_is)
{
    ASSERT_FALSE(rule());
    ASSERT_TEXT(answer(), "NOERROR");
    run(model().applyDNS());
    ASSERT_TEXT(model().dnsMessage(), "DNS changed.");
    ASSERT_TRUE(rule());
    EXPECT_TRUE(rule()->enabled);
    EXPECT_TEXT(rule()->comment, "Corvane: keeps browsers with Pi-hole while 1.1.1.1 is this Mac's backup DNS server");
    EXPECT_TEXT(answer(), "NXDOMAIN");
    EXPECT_EQ(model().browserRule(), BrowserRule::InPlace);
}

TEST_F(BrowserRuleFlow, Stays_one_rule_when_dns_is_applied_twice)
{
    run(model().applyDNS());
    run(model().applyDNS());
    ASSERT_TRUE(rule());
    EXPECT_EQ(model().browserRule(), BrowserRule::InPlace);
}

TEST_F(BrowserRuleFlow, Goes_with_the_restored_settings)
{
    run(model().applyDNS());
    ASSERT_TRUE(rule());
    run(model().restoreOldSettings());
    EXPECT_FALSE(rule());
    EXPECT_TEXT(answer(), "NOERROR");
    EXPECT_EQ(model().browserRule(), BrowserRule::NotNeeded);
}

TEST_F(BrowserRuleFlow, Goes_when_pihole_becomes_the_only_server)
{
    run(model().applyDNS());
    ASSERT_TRUE(rule());
    model().setPiholeOnly(true);
    run(model().applyDNS());
    EXPECT_FALSE(rule());
    EXPECT_EQ(model().browserRule(), BrowserRule::NotNeeded);
}

TEST_F(BrowserRuleFlow, Is_put_back_by_the_poll_when_it_has_gone)
{
    run(model().applyDNS());
    ASSERT_TRUE(QCoro::waitFor(model().api().removeRule(kKind, kExpression)));
    run(model().refreshStatus(Stats::Include));
    EXPECT_FALSE(rule()) << "it is looked for once a minute";
    QCoro::waitFor(clock.pause(std::chrono::minutes(1)));
    run(model().refreshStatus(Stats::Include));
    EXPECT_TRUE(rule());
    EXPECT_EQ(model().browserRule(), BrowserRule::InPlace);
}

TEST_F(BrowserRuleFlow, Survives_a_restart_of_pihole_and_of_corvane)
{
    run(model().applyDNS());
    run(model().restartPihole());
    ASSERT_TRUE(rule());
    relaunch();
    run(model().refreshStatus(Stats::Include));
    EXPECT_EQ(model().browserRule(), BrowserRule::InPlace);
}

TEST_F(BrowserRuleFlow, Of_the_user_is_never_touched)
{
    ASSERT_TRUE(addUsersRule());
    run(model().applyDNS());
    EXPECT_EQ(model().browserRule(), BrowserRule::InPlace) << "it does the same";
    run(model().restoreOldSettings());
    ASSERT_TRUE(rule());
    EXPECT_TEXT(rule()->comment, "mine");
}

TEST_F(BrowserRuleFlow, Of_the_user_that_is_switched_off_stays_off_and_is_told)
{
    ASSERT_TRUE(addUsersRule(false));
    run(model().applyDNS());
    ASSERT_TRUE(rule());
    EXPECT_FALSE(rule()->enabled);
    EXPECT_EQ(model().browserRule(), BrowserRule::SwitchedOff);
}

TEST_F(BrowserRuleFlow, Leaves_nothing_behind_when_the_prompt_is_cancelled)
{
    Mac::ctl(QStringLiteral("prompt cancel"));
    run(model().applyDNS());
    run(model().refreshStatus(Stats::Include));
    EXPECT_FALSE(rule());
}

TEST_F(BrowserRuleFlow, Is_taken_away_later_when_pihole_was_down_at_the_restore)
{
    run(model().applyDNS());
    Mac::ctl(QStringLiteral("container stop"));
    run(model().restoreOldSettings());
    Mac::ctl(QStringLiteral("container start"));
    relaunch();
    run(model().refreshStatus(Stats::Include));
    EXPECT_FALSE(rule());
}

TEST_F(BrowserRuleFlow, Goes_with_the_poll_when_somebody_else_takes_the_backup_server_away)
{
    run(model().refreshStatus(Stats::Include));
    run(model().applyDNS());
    ASSERT_TRUE(rule());
    Mac::ctl(QStringLiteral("servers Wi-Fi 127.0.0.1"));
    run(model().refreshStatus(Stats::Include));
    EXPECT_FALSE(rule());
    EXPECT_EQ(model().browserRule(), BrowserRule::NotNeeded);
}

TEST_F(BrowserRuleFlow, Stays_while_a_vpn_is_in_front)
{
    run(model().applyDNS());
    Mac::ctl(QStringLiteral("vpn on 10.8.0.1"));
    run(model().refreshStatus(Stats::Include));
    EXPECT_TRUE(rule()) << "the Mac goes back to its own servers when the VPN ends";
}

TEST_F(BrowserRuleFlow, Is_told_as_refused_when_pihole_takes_no_password)
{
    model().setAdminPassword(QStringLiteral("wrong"));
    run(model().applyDNS());
    ASSERT_TEXT(model().dnsMessage(), "DNS changed.");
    EXPECT_EQ(model().browserRule(), BrowserRule::Refused);
}

TEST_F(BrowserRuleFlow, That_an_allowed_name_overrules_is_told)
{
    const PiholeRule allowed{PiholeRule::Kind::AllowedName, QStringLiteral("chrome.cloudflare-dns.com")};
    ASSERT_TRUE(QCoro::waitFor(model().api().addRule(allowed)));
    run(model().applyDNS());
    EXPECT_TRUE(rule());
    EXPECT_TEXT(answer(), "NOERROR");
    EXPECT_EQ(model().browserRule(), BrowserRule::Overruled);
}

TEST_F(BrowserRuleFlow, Was_without_effect_when_pihole_was_silent)
{
    run(model().applyDNS());
    Mac::ctl(QStringLiteral("pihole silent on"));
    run(model().refreshStatus(Stats::Leave));
    EXPECT_EQ(model().browserRule(), BrowserRule::Interrupted);
    Mac::ctl(QStringLiteral("pihole silent off"));
    QCoro::waitFor(clock.pause(std::chrono::minutes(1)));
    run(model().refreshStatus(Stats::Include));
    EXPECT_EQ(model().browserRule(), BrowserRule::Interrupted) << "the browser does not come back by itself";
}

TEST_F(BrowserRuleFlow, Was_without_effect_when_blocking_was_paused)
{
    run(model().applyDNS());
    run(model().pauseBlocking());
    EXPECT_TEXT(answer(), "NOERROR");
    EXPECT_EQ(model().browserRule(), BrowserRule::Interrupted);
    run(model().resumeBlocking());
    EXPECT_EQ(model().browserRule(), BrowserRule::Interrupted);
}

TEST_F(BrowserRuleFlow, Is_not_called_overruled_while_blocking_is_off)
{
    run(model().pauseBlocking());
    run(model().applyDNS());
    EXPECT_TRUE(rule());
    EXPECT_NE(model().browserRule(), BrowserRule::Overruled);
}

TEST_F(BrowserRuleFlow, Goes_before_pihole_is_removed)
{
    run(model().applyDNS());
    for (const char *removal : {"volume rm *", "rm *"}) {
        Mac::ctl(QStringList{QStringLiteral("fault"), QStringLiteral("docker"), QStringLiteral("fail"),
                             QStringLiteral("1"), QStringLiteral("it is in use"), QStringLiteral("--when"),
                             QString::fromLatin1(removal)});
    }
    const QString password = model().adminPassword();
    run(model().removePihole());
    model().setAdminPassword(password);
    model().configureAPI();
    EXPECT_FALSE(rule()) << "where the rest could not be removed, it is not left behind";
}

TEST_F(BrowserRuleFlow, That_came_with_an_old_backup_is_taken_away)
{
    run(model().applyDNS());
    user.picks(QDir::home().filePath(QStringLiteral("with-rule.zip")));
    run(model().exportBackup());
    run(model().restoreOldSettings());
    run(model().refreshStatus(Stats::Include));
    ASSERT_FALSE(rule());
    run(model().importBackup());
    run(model().refreshStatus(Stats::Include));
    EXPECT_FALSE(rule());
}

TEST_F(BrowserRuleFlow, Leaves_piholes_settings_as_they_were_before_the_set_up)
{
    const PiholeRule mine{PiholeRule::Kind::DeniedName, QStringLiteral("ads.example.org"), QStringLiteral("mine")};
    ASSERT_TRUE(QCoro::waitFor(model().api().addRule(mine)));
    const QList<std::pair<QByteArray, QByteArray>> before = exported();
    ASSERT_GT(before.size(), 1);
    run(model().applyDNS());
    EXPECT_NE(exported(), before);
    run(model().restoreOldSettings());
    EXPECT_EQ(exported(), before);
}

} // namespace corvane::test
