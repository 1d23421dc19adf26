#include "app/app_model.h"
#include "dns/dns_configurator.h"
#include "exec/keychain.h"
#include "runtime/pihole_controller.h"
#include "tests/flows/fast_clock.h"
#include "tests/flows/mac.h"
#include "tests/flows/pihole_files.h"
#include "tests/flows/saved_files.h"
#include "tests/flows/user.h"
#include "tests/support/begun.h"

#include <QCoreApplication>
#include <QCoro/QCoroTask>
#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QThread>
#include <gtest/gtest.h>

#include <algorithm>
#include <iostream>
#include <random>

namespace corvane::test {

namespace {

constexpr int kPatience = 30'000; // milliseconds
const QString kPassword = QStringLiteral("correct-horse-9");

/// How many moments to try for each flow: a third of what the command line says.
int moments()
{
    const QStringList arguments = QCoreApplication::arguments();
    const qsizetype option = arguments.indexOf(QStringLiteral("--moments"));
    return option < 0 ? 4 : std::max(1, (arguments.value(option + 1).toInt() + 2) / 3);
}

/// Corvane in a process of its own, in the middle of a flow.
class Victim {
public:
    explicit Victim(const QString &flow)
    {
        m_process.start(QCoreApplication::applicationDirPath() + QStringLiteral("/kill_sweep_driver"), {flow});
        waitForLine("begin");
        m_sinceBegin.start();
    }

    /// Lets it end; how long it took, in microseconds.
    qint64 live()
    {
        waitForLine("end");
        const qint64 time = m_sinceBegin.nsecsElapsed() / 1000;
        EXPECT_TRUE(m_process.waitForFinished(kPatience));
        return time;
    }

    /// Kills it this many microseconds after it began; whether it had not ended by then.
    bool killAfter(qint64 microseconds)
    {
        QThread::usleep(static_cast<unsigned long>(microseconds));
        m_process.kill();
        EXPECT_TRUE(m_process.waitForFinished(kPatience));
        return m_process.exitStatus() == QProcess::CrashExit;
    }

private:
    void waitForLine(const QByteArray &line)
    {
        const QDeadlineTimer deadline(kPatience);
        while (m_process.readLine().trimmed() != line) {
            ASSERT_FALSE(deadline.hasExpired()) << m_process.readAllStandardError().constData();
            m_process.waitForReadyRead(20);
        }
    }

    QProcess m_process;
    QElapsedTimer m_sinceBegin;
};

/// The next start of Corvane after the kill.
struct NextStart {
    std::unique_ptr<SettingsStore> settings = systemSettingsStore();
    std::unique_ptr<Workspace> workspace = systemWorkspace();
    std::unique_ptr<LoginItem> loginItem = systemLoginItem();
    FastClock clock;
    Dialogs dialogs;
    User user{dialogs};
    AppModel model{{*settings, dialogs, *workspace, *loginItem, clock, QUrl()}};

    NextStart() { test::untilBegun(model); }

    void run(Flow<> flow)
    {
        QCoro::waitFor(std::move(flow));
        const QDeadlineTimer deadline(kPatience);
        while (model.operationRunning() && !deadline.hasExpired())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 5);
    }
};

QStringList wifiServers()
{
    for (const NetworkService &service : QCoro::waitFor(DNSConfigurator::listServices())) {
        if (service.name == QLatin1String("Wi-Fi")) return service.servers;
    }
    return {};
}

bool pointsAtPihole() { return wifiServers().contains(QStringLiteral("127.0.0.1")); }

class KillSweep : public testing::TestWithParam<const char *> {
protected:
    /// A Mac that Corvane has set up, with a backup of the DNS servers before that.
    static void prepare()
    {
        Mac::reset(QStringLiteral("running"));
        Mac::ctl(QStringLiteral("pihole login-limit 1000"));
        ASSERT_TRUE(DNSConfigurator::saveBackup(QCoro::waitFor(DNSConfigurator::listServices())));
        Mac::ctl(QStringLiteral("servers Wi-Fi 127.0.0.1 1.1.1.1"));
        const auto settings = systemSettingsStore();
        settings->setValue(QStringLiteral("wizardFinished"), true);
    }

    /// What Corvane had started runs on after its death, as it does on a Mac.
    static void waitForOrphans()
    {
        const QDeadlineTimer deadline(kPatience);
        const auto runs = [](const QJsonObject &call) { return call.value(QLatin1String("end")).isNull(); };
        while (std::ranges::any_of(Mac::journal(), runs)) {
            ASSERT_FALSE(deadline.hasExpired());
            QThread::msleep(5);
        }
    }

    static void expectWholeFiles()
    {
        if (QFile::exists(PiholeFiles::compose())) {
            EXPECT_FALSE(PiholeFiles::composeTag().isEmpty());
            EXPECT_GT(PiholeFiles::composePort(), 0);
        }
        for (const QString &backup : PiholeFiles::backups())
            EXPECT_TRUE(isWholeZip(contentOf(backup))) << backup.toStdString();
        EXPECT_TRUE(DNSConfigurator::hasBackup());
    }

    static void expectNameResolution()
    {
        const bool usesPihole = pointsAtPihole();
        EXPECT_TRUE(!usesPihole || DNSConfigurator::hasBackup());
        if (PiholeFiles::volumes().isEmpty()) {
            EXPECT_FALSE(usesPihole) << "a Pi-hole that is gone for good";
        }
    }
};

/// Pin, port and files agree with the container, or the screen offers one that does.
void expectAgreement(const AppModel &model)
{
    EXPECT_EQ(PiholeFiles::composeTag(), model.pinnedTag());
    EXPECT_EQ(PiholeFiles::composePort(), model.webPort());
    EXPECT_TRUE(PiholeFiles::environmentIsWhole(kPassword));
    const auto deployed = QCoro::waitFor(PiholeController::deployed());
    ASSERT_TRUE(deployed);
    const bool agrees = deployed->exists && deployed->tag == model.pinnedTag() && deployed->webPort == model.webPort();
    EXPECT_TRUE(agrees || model.wayBack() == model.pinnedTag())
        << "container " << deployed->tag.toStdString() << " on " << deployed->webPort << ", pinned "
        << model.pinnedTag().toStdString() << " on " << model.webPort();
    EXPECT_NE(agrees, model.notes().contains(QStringLiteral("version")));
}

void expectSetUp(NextStart &next, const char *flow)
{
    AppModel &model = next.model;
    next.run(model.refreshStatus(Stats::Leave));
    next.run(model.putRight());
    expectAgreement(model);
    EXPECT_EQ(PiholeFiles::volumes(), PiholeFiles::bothVolumes());
    EXPECT_TRUE(model.wizardFinished());
    EXPECT_EQ(model.adminPassword(), kPassword);
    EXPECT_TRUE(model.pinnedTag() == QLatin1String("2026.09.0") ||
                (flow == std::string("update") && model.pinnedTag() == QLatin1String("2026.10.0")));
    EXPECT_TRUE(model.webPort() == 8080 || (flow == std::string("port") && model.webPort() == 8083));

    next.run(model.changeWebPort(8087)); // any action that makes the container again will do
    EXPECT_EQ(model.notice().toStdString(), "");
    expectAgreement(model);
    EXPECT_EQ(PiholeFiles::composeTag(), model.pinnedTag());
    EXPECT_EQ(PiholeFiles::composePort(), 8087);
    EXPECT_TRUE(PiholeFiles::environmentIsWhole(kPassword));
    EXPECT_EQ(PiholeFiles::containerImage().toStdString(), "pihole/pihole:" + model.pinnedTag().toStdString());
    EXPECT_TRUE(QCoro::waitFor(model.api().webAnswers()));
}

void expectRemovable(NextStart &next)
{
    next.run(next.model.removePihole());
    EXPECT_EQ(next.model.notice().toStdString(), "Pi-hole was removed.");
    EXPECT_FALSE(pointsAtPihole());
    EXPECT_TRUE(PiholeFiles::volumes().isEmpty());
    EXPECT_TRUE(PiholeFiles::containerImage().isEmpty());
    EXPECT_FALSE(QFile::exists(PiholeFiles::compose()));
    EXPECT_FALSE(QFile::exists(PiholeFiles::environment()));
    EXPECT_FALSE(Keychain::load());
}

} // namespace

TEST_P(KillSweep, Leaves_a_state_that_the_next_start_can_use)
{
    const QString flow = QString::fromLatin1(GetParam());
    prepare();
    qint64 whole = Victim(flow).live();
    std::mt19937_64 dice(std::random_device{}());
    const int wanted = moments();
    int killed = 0;
    for (int tries = 0; killed < wanted && tries < 4 * wanted && !HasFailure(); ++tries) {
        prepare();
        Victim victim(flow);
        const auto part = std::max<qint64>(1, whole / wanted);
        const qint64 moment = part * killed + qint64(dice() % quint64(part));
        SCOPED_TRACE(testing::Message() << GetParam() << " killed after " << moment << " of " << whole << " us");
        if (victim.killAfter(moment))
            ++killed;
        else
            whole = moment; // it is quicker than it was at first, when others were busy
        waitForOrphans();
        expectWholeFiles();
        expectNameResolution();
        NextStart next;
        if (flow == QLatin1String("removal"))
            expectRemovable(next);
        else
            expectSetUp(next, GetParam());
    }
    std::cout << GetParam() << ": killed at " << killed << " moments within " << whole << " us\n";
    EXPECT_EQ(killed, wanted);
}

INSTANTIATE_TEST_SUITE_P(Flows, KillSweep, testing::Values("update", "port", "removal"),
                         [](const testing::TestParamInfo<const char *> &each) { return std::string(each.param); });

} // namespace corvane::test

int main(int argc, char **argv)
{
    QCoreApplication::setOrganizationName(QStringLiteral("Corvane"));
    QCoreApplication::setApplicationName(QStringLiteral("Corvane"));
    testing::InitGoogleTest(&argc, argv);
    const QCoreApplication app(argc, argv);
    return RUN_ALL_TESTS();
}
