#include "tests/sentences/on_screen.h"

#include <QRegularExpression>

namespace corvane::test {

namespace {

const char *const kLists = "None of the test domains was blocked. The block lists are downloaded on the first start, "
                           "which takes about a minute. Press Test again soon.";

/// What the test of step 4 or 5 says: the Mac, what is done to it, and the sentences.
struct Case {
    const char *state;
    std::initializer_list<const char *> orders;
    std::initializer_list<const char *> sentences;
};

/// What the tests of Pi-hole and of its blocking say where they were started, and at the end of the set-up.
class PiholeTests : public OnScreen {
protected:
    void expect(const Case &each, int step)
    {
        begin(each.state);
        for (const char *order : each.orders)
            mac(order);
        openStep(step);
        pressButton("Test");
        for (const char *sentence : each.sentences)
            EXPECT_TRUE(appears(sentence)) << each.state;
        settle();
    }

    /// Whether the row of the blocked name ends with how it was blocked.
    [[nodiscard]] bool blocked(const char *kind)
    {
        const QRegularExpression row(QStringLiteral("^Blocked: [a-z0-9.-]+ ") +
                                     QRegularExpression::escape(QString::fromUtf8(kind)) + u'$');
        return !texts().filter(row).isEmpty();
    }
};

} // namespace

TEST_F(PiholeTests, Say_how_container_page_and_dns_do)
{
    const Case cases[] = {
        {"running",
         {},
         {"Container running and healthy", "Running and healthy.", "Admin page answers on 127.0.0.1:8080",
          "http://127.0.0.1:8080/admin answered.", "dig @127.0.0.1 example.com returns an answer"}},
        {"running", {"container health none"}, {"Running (this image reports no health status)."}},
        {"running",
         {"container health unhealthy", "pihole web drop", "fault dig fail 9"},
         {"Running, but its health is 'unhealthy'. It may still be starting; wait a minute and press Test.",
          "No answer on port 8080.", "No answer on 127.0.0.1 port 53."}},
        {"running", {"container stop"}, {"The container exists but is 'exited'."}},
        {"engine", {}, {"No container named 'pihole' yet. Press Start Pi-hole."}},
        {"stopped", {}, {"Docker is not running."}},
        {"running",
         {"forwarder ssh"},
         {"No answer over UDP, but TCP works. UDP port 53 is probably not reaching the Mac."}},
        {"running",
         {"fault dig fail 9"},
         {"No answer over UDP (or TCP). UDP port 53 is probably not reaching the Mac, or Pi-hole is still starting."}},
    };
    for (const Case &each : cases)
        expect(each, 4);
}

TEST_F(PiholeTests, Tell_what_they_wait_for)
{
    begin("running");
    mac("fault docker late 1 --at 1");
    openStep(4);
    pressButton("Test");
    EXPECT_TRUE(appear({"Checking...", "Waiting..."}));
    EXPECT_TRUE(appearsWithReason("Answer: "));
}

TEST_F(PiholeTests, Tell_how_they_ended_on_the_dashboard_and_at_the_end)
{
    begin("running");
    openDashboard();
    pressButton("Run tests again");
    EXPECT_TRUE(appear({"Container, admin page and DNS answer all passed",
                        "A tracker domain was blocked and a normal one allowed",
                        "0 of 3 test lookups through the system resolver showed up in Pi-hole's log. The first DNS "
                        "server macOS uses is not Pi-hole."}));
    settle();
    mac("container stop");
    pressButton("Run tests again");
    EXPECT_TRUE(appear({"At least one Pi-hole check failed", "Blocking test did not pass"}));
    settle();
    openStep(8);
    EXPECT_TRUE(appear({"At least one Pi-hole check failed", "Blocking test did not pass"}));
}

TEST_F(PiholeTests, Offer_the_fix_for_udp_and_tell_its_steps)
{
    begin("running");
    mac("forwarder ssh");
    openStep(4);
    pressButton("Test");
    EXPECT_TRUE(appear(
        {"UDP port 53 is probably not reaching your Mac",
         "The container is healthy, but DNS over UDP gets no answer. Colima's default SSH port forwarder only forwards "
         "TCP; the gRPC forwarder also forwards UDP.",
         "Fix: run 'colima stop', then 'colima start --edit', change 'portForwarder: ssh' to 'portForwarder: grpc', "
         "save, and run 'colima start'. Then press Test again."}));
    pressButton("Restart Colima with UDP forwarding for me");
    pressButton("Restart Colima");
    EXPECT_TRUE(appear({"Restarting Colima", "Finished."}));
    settle();
    EXPECT_TRUE(logged("startLog", "> colima stop"));
    EXPECT_TRUE(logged("startLog", "> colima start --port-forwarder grpc"));
}

TEST_F(PiholeTests, Leave_the_fix_to_the_user_where_colima_does_not_know_it)
{
    expect({"running",
            {"forwarder ssh", "port-forwarder-option off"},
            {"This Colima version does not show a --port-forwarder option, so use the manual steps above."}},
           4);
}

TEST_F(PiholeTests, Say_what_was_blocked)
{
    expect({"running", {}, {"Allowed: example.com"}}, 5);
    const QString counts = textOf(QStringLiteral("blockingCounts"));
    EXPECT_TRUE(QRegularExpression(QStringLiteral("^From Pi-hole's API: Queries today: \\d+. Blocked today: \\d+$"))
                    .match(counts)
                    .hasMatch())
        << counts.toStdString();
    EXPECT_TRUE(appearsWithReason("Answer: "));
    EXPECT_TRUE(blocked("answered 0.0.0.0 (nowhere)"));

    expect({"running", {"pihole block-mode nxdomain"}, {}}, 5);
    EXPECT_TRUE(blocked("NXDOMAIN (the name does not exist)"));
}

TEST_F(PiholeTests, Say_why_nothing_was_blocked_or_answered)
{
    expect({"running",
            {"fault dig fail 9"},
            {"Nothing was blocked", "No test tracker domain was blocked yet.", kLists, "no answer (timeout)"}},
           5);
    // The status check would have brought the answer into Pi-hole's cache.
    start("running");
    mac("internet off");
    openStep(5);
    pressButton("Test");
    EXPECT_TRUE(appears("no answer (SERVFAIL)"));
}

TEST_F(PiholeTests, Say_why_the_statistics_are_missing)
{
    expect({"running", {"pihole web drop"}, {"Could not read the statistics: Pi-hole did not answer on 127.0.0.1."}},
           5);
}

TEST_F(PiholeTests, An_empty_answer_is_no_answer)
{
    begin("stopped");
    openStep(5);
    // The test always words why there was none, so a bare one can only be put there.
    model().setBlockingTest(BlockingTestResult());
    EXPECT_TRUE(appears("no answer"));
}

} // namespace corvane::test
