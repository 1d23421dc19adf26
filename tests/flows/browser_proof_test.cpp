#include "tests/flows/in_state.h"
#include "tests/flows/saved_files.h"

#include <QDir>

namespace corvane::test {

namespace {

/// A Mac that asks its Pi-hole, with a browser that has been looked at.
class BrowserProofFlow : public Protected {
protected:
    BrowserProofFlow()
    {
        Mac::ctl(QStringLiteral("pihole log-delay 0"));
        Mac::ctl(QStringLiteral("pihole login-limit 1000")); // these tests log in faster than people
        Mac::ctl(QStringLiteral("app add com.brave.Browser"));
        write(QDir::home().filePath(
                  QStringLiteral("Library/Application Support/BraveSoftware/Brave-Browser/Local State")),
              "{}");
        run(model().refreshStatus(Stats::Include));
        model().setBrowserReadAllowed(true);
        run(model().scanBrowsers());
    }

    [[nodiscard]] BrowserProof proof() { return model().browserProofs().value(QStringLiteral("brave")); }

    static QStringList opened()
    {
        QStringList addresses;
        const QJsonArray entries = Mac::ctl(QStringLiteral("opened")).toArray();
        for (const QJsonValue &entry : entries) {
            EXPECT_EQ(entry.toObject().value(QLatin1String("bundle")).toString(), QStringLiteral("com.brave.Browser"));
            addresses += entry.toObject().value(QLatin1String("address")).toString();
        }
        return addresses;
    }
};

} // namespace

TEST_F(BrowserProofFlow, Two_names_that_arrive_ten_seconds_apart_prove_it)
{
    const auto before = clock.waited();
    run(model().proveBrowser(QStringLiteral("brave")));
    EXPECT_EQ(proof(), BrowserProof::AsksPihole);
    EXPECT_EQ(clock.waited() - before, std::chrono::seconds(12)) << "ten between the names, two until the log is read";
    const QStringList addresses = opened();
    ASSERT_EQ(addresses.size(), 2);
    EXPECT_NE(addresses.first(), addresses.last());
    EXPECT_TRUE(model().outcomes().isEmpty()) << "the test of the default browser is another one";
    EXPECT_TRUE(quiet());
}

TEST_F(BrowserProofFlow, A_browser_that_leaves_after_a_moment_goes_past_pihole)
{
    Mac::ctl(QStringLiteral("browser leaves 1.1.1.1"));
    run(model().proveBrowser(QStringLiteral("brave")));
    EXPECT_EQ(proof(), BrowserProof::GoesPast);
}

TEST_F(BrowserProofFlow, A_browser_that_asks_elsewhere_is_told_after_20_seconds_more)
{
    Mac::ctl(QStringLiteral("browser own-dns 1.1.1.1"));
    const auto before = clock.waited();
    run(model().proveBrowser(QStringLiteral("brave")));
    EXPECT_EQ(proof(), BrowserProof::NeverAsks);
    EXPECT_EQ(clock.waited() - before, std::chrono::seconds(30));
}

TEST_F(BrowserProofFlow, A_browser_that_cannot_be_opened_is_told_at_once)
{
    Mac::ctl(QStringLiteral("app remove com.brave.Browser"));
    run(model().proveBrowser(QStringLiteral("brave")));
    EXPECT_EQ(proof(), BrowserProof::NotOpened);
}

TEST_F(BrowserProofFlow, A_log_that_cannot_be_read_proves_nothing)
{
    model().setAdminPassword(QStringLiteral("not-the-password"));
    run(model().proveBrowser(QStringLiteral("brave")));
    EXPECT_EQ(proof(), BrowserProof::Unread);
}

TEST_F(BrowserProofFlow, A_second_test_during_the_first_does_nothing)
{
    auto first = model().proveBrowser(QStringLiteral("brave"));
    EXPECT_TRUE(model().busy().contains(QStringLiteral("browserproof")));
    EXPECT_EQ(proof(), BrowserProof::Running);
    run(model().proveBrowser(QStringLiteral("safari")));
    EXPECT_FALSE(model().browserProofs().contains(QStringLiteral("safari")));
    run(std::move(first));
    EXPECT_EQ(opened().size(), 2);
}

TEST_F(BrowserProofFlow, A_test_in_the_middle_of_which_corvane_quits_opens_nothing_more_and_finds_nothing)
{
    launch(model().proveBrowser(QStringLiteral("brave")));
    model().stopEverything();
    waitFor([this] { return quiet(); }, "it ended");
    EXPECT_LE(opened().size(), 1);
    EXPECT_EQ(proof(), BrowserProof::Running);
}

TEST_F(BrowserProofFlow, Ends_the_doubt_that_an_outage_left)
{
    ASSERT_EQ(model().browserRule(), BrowserRule::InPlace);
    run(model().pauseBlocking());
    run(model().resumeBlocking());
    ASSERT_EQ(model().browserRule(), BrowserRule::Interrupted);
    Mac::ctl(QStringLiteral("browser leaves 1.1.1.1"));
    run(model().proveBrowser(QStringLiteral("brave")));
    EXPECT_EQ(model().browserRule(), BrowserRule::Interrupted);
    Mac::ctl(QStringLiteral("browser system"));
    run(model().proveBrowser(QStringLiteral("brave")));
    EXPECT_EQ(model().browserRule(), BrowserRule::InPlace);
}

TEST_F(BrowserProofFlow, Firefox_is_known_to_be_told_to_leave_its_secure_dns_off)
{
    EXPECT_EQ(model().firefoxToldOff(), true);
    Mac::ctl(QStringLiteral("pihole silent on"));
    run(model().refreshStatus(Stats::Leave));
    run(model().scanBrowsers());
    EXPECT_EQ(model().firefoxToldOff(), std::nullopt);
}

TEST_F(BrowserProofFlow, A_model_that_goes_away_during_the_test_ends_it_quietly)
{
    launch(model().proveBrowser(QStringLiteral("brave")));
    relaunch();
    EXPECT_TRUE(quiet());
    EXPECT_TRUE(model().browserProofs().isEmpty());
}

} // namespace corvane::test
