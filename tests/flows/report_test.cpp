#include "dns/dns_backup.h"
#include "tests/flows/in_state.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>

namespace corvane::test {

namespace {

const QString kPassword = QStringLiteral("correct-horse-9");

class Report : public FlowTest {
protected:
    Report()
        : FlowTest(QStringLiteral("protected"))
    {
        QCoreApplication::setApplicationVersion(QStringLiteral("7.6.5"));
        Mac::ctl(QStringLiteral("pihole log-delay 0"));
        run(model().refreshStatus(Stats::Include));
    }

    void expect(const char *line)
    {
        EXPECT_TRUE(model().report().contains(QString::fromUtf8(line))) << line << " in\n"
                                                                        << model().report().toStdString();
    }
    void expectNot(const QString &text)
    {
        EXPECT_FALSE(model().report().contains(text)) << text.toStdString() << " in\n"
                                                      << model().report().toStdString();
    }
    static QByteArray contentOf(const QString &path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("cannot be read");
    }
};

} // namespace

TEST_F(Report, Tells_versions_states_and_checks)
{
    run(model().runSystemChecks());
    run(model().makeReport());
    expect("Corvane: 7.6.5\n");
    expect("macOS: ");
    expect("Pi-hole: 2026.09.0\n");
    expect("colima: ");
    expect(" ms)\n");
    expect("Status: Pi-hole is answering and this Mac uses it\n");
    expect("Checked: yes\n");
    expect("Answers: yes\n");
    expect("Old servers are saved: no\n");
    expect("Apple silicon: ok.");
    EXPECT_TRUE(quiet());
}

TEST_F(Report, Names_its_sections_and_says_what_is_known)
{
    model().setEngineProblem(QStringLiteral("Docker does not answer."));
    run(model().makeReport());
    for (const char *title : {"Versions\n--------\n", "State\n-----\n", "Messages\n--------\n", "Checks\n------\n"})
        expect(title);
    expect("Engine: Docker does not answer.\n");
    expect("Password known: yes\n");
    model().setAdminPassword({});
    run(model().makeReport());
    expect("Password known: no\n");
}

TEST_F(Report, Holds_the_end_of_the_last_operations_logs)
{
    Mac::reset(QStringLiteral("stopped"));
    Mac::ctl(QStringLiteral("fault colima fail --when start*"));
    model().startColimaOnly();
    waitForOperation(model().installOp());
    run(model().makeReport());
    expect("Log: ");
    expect("It: failed: ");
}

TEST_F(Report, Says_which_tool_is_missing_or_fails)
{
    Mac::reset(QStringLiteral("homebrew"));
    run(model().makeReport());
    expect("colima: not found\n");
    expect("docker: not found\n");
    Mac::ctl(QStringLiteral("fault brew fail 3"));
    run(model().makeReport());
    expect("[status 3]");
}

TEST_F(Report, Names_no_site_network_person_address_or_password)
{
    const QString service = QStringLiteral("Ada's \"LAN\" 🙂");
    Mac::ctl(QStringList{QStringLiteral("service"), QStringLiteral("add"), service});
    Mac::ctl(QStringList{QStringLiteral("servers"), service, QStringLiteral("192.168.7.9")});
    run(model().loadServices());
    ASSERT_TRUE(DNSBackup::store({{QStringLiteral("Old Lab"), {QStringLiteral("10.9.8.7")}}}));
    model().setPasswordInput(kPassword);
    model().setDnsMessage(service + QStringLiteral(" and Old Lab: 192.168.7.9, fe80::7%en0, bank.example.org"));
    model().setNotice(QStringLiteral("In ") + QDir::homePath() + QStringLiteral("/x the password is ") + kPassword);
    model().installOp()->append(QStringLiteral("evil\u200b.bank.de 3c:22:fb:01:02:ff"));
    run(model().makeReport());
    for (const QString &secret :
         {service, QStringLiteral("Old Lab"), QStringLiteral("192.168.7.9"), QStringLiteral("fe80"),
          QStringLiteral("bank"), kPassword, QDir::homePath(), QStringLiteral("3c:22")})
        expectNot(secret);
    expect("DNS: <network> and <network>: <address>, <address>, <name>\n");
    expect("Notice: In ~/x the password is <secret>\n");
}

TEST_F(Report, What_is_saved_is_what_was_shown)
{
    run(model().makeReport());
    const QString shown = model().report();
    const QString path = QDir::home().filePath(QStringLiteral("report.txt"));
    user.picks(path);
    model().setNotice({});
    run(model().saveReport());
    EXPECT_EQ(contentOf(path), shown.toUtf8());
    EXPECT_TEXT(user.panels().value(0).proposedName, "Corvane report.txt");
    EXPECT_TEXT(model().notice(), "The report is saved.");
    EXPECT_TEXT(model().report(), "") << "it has been dealt with";
}

TEST_F(Report, A_report_that_cannot_be_saved_stays_and_says_why)
{
    run(model().makeReport());
    user.picks(QStringLiteral("/nowhere/report.txt"));
    run(model().saveReport());
    EXPECT_TRUE(model().notice().startsWith(QStringLiteral("The report could not be saved: ")));
    EXPECT_FALSE(model().report().isEmpty());
    user.cancels();
    model().setNotice({});
    run(model().saveReport());
    EXPECT_TEXT(model().notice(), "");
    EXPECT_FALSE(model().report().isEmpty());
}

TEST_F(Report, That_corvane_quits_meanwhile_ends_it_quietly)
{
    launch(model().makeReport());
    model().stopEverything();
    waitFor([this] { return quiet(); }, "the report's end");
    EXPECT_TEXT(model().report(), "");
}

TEST_F(Report, A_model_that_goes_away_meanwhile_ends_it_quietly)
{
    launch(model().makeReport());
    relaunch();
    EXPECT_TEXT(model().report(), "");
    EXPECT_TRUE(quiet());
}

} // namespace corvane::test
