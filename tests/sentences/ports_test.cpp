#include "tests/sentences/on_screen.h"

namespace corvane::test {

namespace {

/// Which ports are on offer when another program holds the web port, and what is said after one was chosen.
class Ports : public OnScreen {
protected:
    [[nodiscard]] QStringList offered() const
    {
        const QQuickItem *picker = find(QStringLiteral("freePortPicker"));
        return picker && inSight(picker) ? picker->property("choices").toStringList() : QStringList();
    }
    [[nodiscard]] testing::AssertionResult comesToOffer(const QStringList &ports)
    {
        if (eventually([&] { return offered() == ports; })) return testing::AssertionSuccess();
        return testing::AssertionFailure() << "on offer: " << offered().join(u' ').toStdString();
    }
    static void take(int port) { Mac::ctl(QStringLiteral("take-port %1 tcp --as httpd").arg(port)); }
    static void give(int port) { Mac::ctl(QStringLiteral("free-port %1 tcp").arg(port)); }
};

const char *const kAllTaken = "Ports 8081 to 8090 are all taken too.";
const char *const kTaken = "A port that Pi-hole needs is taken. See what holds it below.";

} // namespace

TEST_F(Ports, One_that_was_given_back_comes_on_offer_when_the_checks_run_again)
{
    begin("stopped");
    for (int port = 8080; port <= 8090; ++port)
        take(port);
    openStep(2);
    EXPECT_TRUE(appears(kAllTaken));
    EXPECT_FALSE(shows(QStringLiteral("freePortPicker")));
    give(8085);
    pressButton("Test (run the checks again)");
    EXPECT_TRUE(comesToOffer({QStringLiteral("8085")}));
    EXPECT_FALSE(reads(QString::fromLatin1(kAllTaken)));
}

TEST_F(Ports, One_that_was_given_back_comes_on_offer_when_the_step_is_opened_again)
{
    begin("stopped");
    for (int port = 8080; port <= 8090; ++port)
        take(port);
    openStep(2);
    EXPECT_TRUE(appears(kAllTaken));
    openStep(1);
    give(8086);
    openStep(2);
    EXPECT_TRUE(comesToOffer({QStringLiteral("8086")}));
}

TEST_F(Ports, One_that_was_taken_meanwhile_leaves_the_offer)
{
    begin("stopped");
    take(8080);
    openStep(2);
    EXPECT_TRUE(eventually([this] { return offered().contains(QStringLiteral("8083")); }));
    take(8083);
    pick("freePortPicker", "8083");
    EXPECT_TRUE(appears("Port 8083 is already in use."));
    EXPECT_TRUE(eventually([this] { return !offered().contains(QStringLiteral("8083")); }));
    EXPECT_TRUE(offered().contains(QStringLiteral("8084")));
}

TEST_F(Ports, After_another_one_was_chosen_nothing_speaks_of_the_old_one)
{
    begin("engine");
    openStep(4);
    mac("fault|docker|fail|1|Bind for 127.0.0.1:8080 failed: port is already allocated|--when|run *");
    pressButton("Start Pi-hole");
    EXPECT_TRUE(eventually(
        [this] { return reads(QStringLiteral("Another container in Colima holds a port that Pi-hole needs.")); }));
    settle();
    take(8080);
    pressButton("Start Pi-hole");
    EXPECT_TRUE(appears(kTaken));
    EXPECT_TRUE(shows(QStringLiteral("startLog")));
    pick("freePortPicker", "8085");
    EXPECT_TRUE(eventually([this] { return !shows(QStringLiteral("portsPanel")); }));
    EXPECT_FALSE(reads(QString::fromLatin1(kTaken)));
    EXPECT_FALSE(shows(QStringLiteral("startLog")));
}

TEST_F(Ports, After_another_one_was_chosen_a_taken_port_53_is_still_told)
{
    begin("engine");
    mac("port53 grant");
    take(8080);
    mac("take-port 53 udp --as dnsmasq");
    openStep(4);
    pressButton("Start Pi-hole");
    EXPECT_TRUE(appear({kTaken, "UDP 53 on 127.0.0.1 is in use by:"}));
    pick("freePortPicker", "8085");
    EXPECT_TRUE(eventually([this] { return !reads(QStringLiteral("TCP 8080 on 127.0.0.1 is in use by:")); }));
    EXPECT_TRUE(appear({kTaken, "UDP 53 on 127.0.0.1 is in use by:"}));
    mac("port53 deny");
}

TEST_F(Ports, The_checks_speak_of_the_one_that_was_picked_in_Settings)
{
    begin("stopped");
    take(8080);
    openStep(2);
    EXPECT_TRUE(appear({"Ports 53 and 8080", "TCP 8080 on 127.0.0.1 is in use by:"}));
    openSettings();
    pick("webPortPicker", "8085");
    settle();
    openStep(2);
    EXPECT_TRUE(appears("Ports 53 and 8085"));
    EXPECT_FALSE(shows(QStringLiteral("portsPanel")));
}

TEST_F(Ports, One_that_is_refused_leaves_the_old_one_in_the_picker)
{
    begin("stopped");
    take(8083);
    openSettings();
    pick("webPortPicker", "8083");
    EXPECT_TRUE(appears("Port 8083 is already in use."));
    const auto *shown = find(QStringLiteral("webPortPicker"))->property("contentItem").value<QQuickItem *>();
    EXPECT_EQ(shown->property("text").toString(), QStringLiteral("8080"));
}

} // namespace corvane::test
