#include "dns/dns_configurator.h"
#include "exec/keychain.h"
#include "tests/flows/flow_test.h"
#include "tests/flows/pihole_files.h"
#include "tests/flows/saved_files.h"

#include <QDeadlineTimer>
#include <QDir>

#include <iostream>

namespace corvane::test {

namespace {

class Story : public FlowTest {
protected:
    Story()
        : FlowTest(QStringLiteral("running"))
    {
        Mac::ctl(QStringLiteral("pihole login-limit 1000"));
        Mac::ctl(QStringLiteral("pihole log-delay 0"));
        Mac::ctl(QStringLiteral("pihole restart-seconds 0.5")); // long enough to be seen
        model().setWizardFinished(true);
    }

    /// Tells a step and what Corvane said at its end; a step that went otherwise fails the test.
    void step(const char *what, const QString &said, const std::string &expected)
    {
        std::cout << "  " << what << ": " << said.toStdString() << '\n';
        EXPECT_TRUE(said.toStdString().starts_with(expected)) << what << ": " << said.toStdString();
    }

    void tellOperation()
    {
        for (const QString &line : model().maintOp()->lines())
            std::cout << "      | " << line.toStdString() << '\n';
    }

    void settle()
    {
        waitFor([this] { return quiet(); }, "the model came to rest");
    }

    void usePihole()
    {
        run(model().refreshStatus(Stats::Include));
        run(model().loadServices());
        run(model().applyDNS());
        step("this Mac uses Pi-hole", model().dnsMessage(), "DNS changed.");
    }

    void testBrowser()
    {
        run(model().runBrowserTest());
        step("browser test", model().browserTestDetail(), "cv-");
        EXPECT_TRUE(model().outcomes().value(QStringLiteral("browser")).passed);
        Mac::ctl(QStringLiteral("browser own-dns 1.1.1.1"));
        run(model().runBrowserTest());
        step("browser test with a browser's own DNS", model().browserTestDetail(), "cv-");
        EXPECT_FALSE(model().outcomes().value(QStringLiteral("browser")).passed);
        Mac::ctl(QStringLiteral("browser system"));
    }

    void readBrowsers()
    {
        Mac::ctl(QStringLiteral("app add com.google.Chrome"));
        write(QDir::home().filePath(QStringLiteral("Library/Application Support/Google/Chrome/Local State")),
              R"({"dns_over_https":{"mode":"secure"}})");
        model().setBrowserReadAllowed(true);
        run(model().scanBrowsers());
        ASSERT_EQ(model().browsers().size(), 5);
        step("Chrome", model().browsers().at(1).detail, "Secure DNS is ON. This bypasses Pi-hole.");
    }

    void saveAndRestore(const QString &zip)
    {
        user.picks(zip);
        run(model().exportBackup());
        step("export", model().notice(), "Backup saved to mine.zip.");
        EXPECT_TRUE(isWholeZip(contentOf(zip)));
        model().setNotice({});
        launch(model().importBackup());
        waitFor([this] { return !model().notice().isEmpty(); }, "the import ended");
        step("import", model().notice(), "Backup restored.");
        waitUntilPageAnswers(false); // Pi-hole restarts
        waitUntilPageAnswers(true);
    }

    void waitUntilPageAnswers(bool answers)
    {
        const QDeadlineTimer deadline(std::chrono::seconds(20));
        while (QCoro::waitFor(model().api().webAnswers()) != answers)
            ASSERT_FALSE(deadline.hasExpired());
    }

    void updateWhilePullFails()
    {
        run(model().checkForUpdates());
        step("update check", model().updateMessage(), "Version 2026.10.0 is available (you have 2026.09.0).");
        Mac::ctl({QStringLiteral("fault"), QStringLiteral("docker"), QStringLiteral("fail"), QStringLiteral("1"),
                  QStringLiteral("dial tcp: no such host"), QStringLiteral("--when"), QStringLiteral("pull *")});
        run(model().performUpdate());
        settle();
        tellOperation();
        step("update with a failing pull", model().updateMessage(),
             "The update did not finish; the pinned version is back to 2026.09.0.");
        EXPECT_TEXT(PiholeFiles::composeTag(), "2026.09.0");
        Mac::ctl(QStringLiteral("fault clear"));
    }

    void update()
    {
        run(model().performUpdate());
        settle();
        tellOperation();
        step("update", model().updateMessage(), "Updated to 2026.10.0.");
        EXPECT_TEXT(PiholeFiles::composeTag(), "2026.10.0");
        EXPECT_TEXT(PiholeFiles::containerImage(), "pihole/pihole:2026.10.0");
        EXPECT_TRUE(model().outcomes().value(QStringLiteral("pihole")).passed);
    }

    void movePort()
    {
        run(model().changeWebPort(8085));
        settle();
        tellOperation();
        step("admin page", model().dashboardURL().toString(), "http://127.0.0.1:8085/admin");
        EXPECT_TRUE(QCoro::waitFor(model().api().webAnswers()));
    }

    void remove()
    {
        run(model().removePihole());
        step("removal", model().notice(), "Pi-hole was removed.");
    }
};

QString servers()
{
    const QJsonArray services = Mac::ctl(QStringLiteral("services")).toArray();
    QStringList all;
    for (const QJsonValue &service : services) {
        for (const QJsonValue &server : service.toObject().value(QLatin1String("servers")).toArray())
            all.append(server.toString());
    }
    return all.join(u' ');
}

} // namespace

TEST_F(Story, From_the_first_browser_to_the_removal)
{
    const QString zip = QDir::home().filePath(QStringLiteral("mine.zip"));
    const QString serversBefore = servers();
    usePihole();
    readBrowsers();
    testBrowser();
    saveAndRestore(zip);
    updateWhilePullFails();
    update();
    movePort();
    model().setLaunchAtLogin(true);
    EXPECT_TRUE(model().launchAtLogin());
    const qsizetype backups = PiholeFiles::backups().size();
    EXPECT_GE(backups, 1) << "two updates within one second share a name";
    remove();

    EXPECT_EQ(servers(), serversBefore) << "DNS is as it was before Corvane";
    EXPECT_TEXT(PiholeFiles::containerImage(), "");
    EXPECT_TRUE(PiholeFiles::volumes().isEmpty());
    EXPECT_FALSE(Keychain::load());
    EXPECT_FALSE(QFile::exists(PiholeFiles::compose()));
    EXPECT_FALSE(QFile::exists(PiholeFiles::environment()));
    EXPECT_TRUE(DNSConfigurator::hasBackup()) << "the DNS backup stays";
    EXPECT_EQ(PiholeFiles::backups().size(), backups) << "and the saved zips";
    EXPECT_TRUE(isWholeZip(contentOf(zip)));
    EXPECT_EQ(settings.value(QStringLiteral("webPort")).toInt(), 8085) << "and the settings";
    EXPECT_TRUE(model().showWizard());
    // A look that began before the removal may still be under way, and then there is no other.
    const auto looksStopped = [this] {
        run(model().refreshStatus(Stats::Leave));
        return model().icon() == MenuIcon::Stopped;
    };
    waitFor(looksStopped, "the status tells of the removal");
}

} // namespace corvane::test
