#include "runtime/pihole_controller.h"
#include "tests/sentences/on_screen.h"

#include <QDir>

namespace corvane::test {

namespace {

/// A start of Pi-hole that ends otherwise than it should: the Mac, what is done to it, and what step 4 says then.
struct Case {
    const char *state;
    const char *order;
    const char *sentence;
};

/// What step 4 says about a start.
class Start : public OnScreen {};

} // namespace

TEST_F(Start, Says_why_it_did_not_succeed)
{
    const Case cases[] = {
        {"engine", "take-port 8080 tcp --as httpd", "A port that Pi-hole needs is taken. See what holds it below."},
        {"engine", "engine stop", "Docker is not running. Finish step 3 first."},
        {"engine", "fault|docker|fail|1|Cannot connect to the Docker daemon at unix:///x.|--when|pull *",
         "Docker is not running. Start Colima first (step 3)."},
        {"engine", "fault|docker|fail|1|error during connect: Is the docker daemon running?|--when|run *",
         "Docker is not running. Start Colima first (step 3)."},
        {"engine", "disk-full on",
         "The Colima disk is full. Free some space (for example 'docker system prune') or recreate Colima with a "
         "bigger "
         "disk."},
        {"engine",
         "fault|docker|fail|125|failed to bind host port 127.0.0.1:8080/tcp: address already in use|--when|run *",
         "A port that Pi-hole needs is taken inside Colima's virtual machine, not on this Mac. Pick another web port "
         "(8081 to 8090)."},
        {"engine", "internet off",
         "Docker could not reach the internet to download Pi-hole. Check your connection (and any VPN) and try again. "
         "If this Mac uses Pi-hole only and Pi-hole is stopped, restore your old DNS settings first."},
        {"engine", "fault|docker|fail|1|permission denied while trying to connect|--when|run *",
         "Docker refused access (permission denied). Check that your user can use Colima's Docker socket."},
        {"engine", "registry remove 2026.09.0",
         "Docker Hub does not have this Pi-hole version (yet). A new version arrives there some time after it is "
         "announced; try again later."},
        {"engine", "fault docker fail 1 --when run*", "Docker reported an error. Open 'Show details' to read it."},
    };
    for (const Case &each : cases) {
        begin(each.state);
        openStep(4);
        mac(each.order);
        pressButton("Start Pi-hole");
        EXPECT_TRUE(appears(each.sentence)) << each.order;
        settle();
    }
}

TEST_F(Start, Tells_its_steps)
{
    begin("engine");
    openStep(4);
    pressButton("Start Pi-hole");
    EXPECT_TRUE(appear({"Starting Pi-hole", "Finished."}));
    settle();
    EXPECT_TRUE(logged("startLog", "> docker pull pihole/pihole:2026.09.0"));
    EXPECT_TRUE(logged("startLog", "> docker rm -f pihole (volumes are kept)"));
    EXPECT_TRUE(logged("startLog", "> docker run -d --name pihole ..."));

    begin("engine");
    mac("compose on");
    openStep(4);
    pressButton("Start Pi-hole");
    EXPECT_TRUE(appears("Finished."));
    settle();
    EXPECT_TRUE(logged("startLog", "> docker compose pull"));
    EXPECT_TRUE(logged("startLog", "> docker compose up -d"));
}

TEST_F(Start, Says_that_it_makes_room_and_who_takes_it)
{
    begin("engine");
    openStep(4);
    pressButton("Start Pi-hole");
    EXPECT_TRUE(appears("Finished."));
    settle();
    EXPECT_TRUE(logged("startLog", "> Making room for Pi-hole in Colima's virtual machine"));
    EXPECT_TRUE(appears("This is usual right after Colima was installed. One restart of Colima mends it for good; "
                        "Pi-hole keeps its settings, and the tests go on by themselves."));

    begin("engine");
    mac("machine room");
    mac("take-port 53 tcp --as unbound --in-machine");
    openStep(4);
    pressButton("Start Pi-hole");
    EXPECT_TRUE(appears("Port 53 is taken inside Colima's virtual machine, by the program 'unbound'. Stop it there, "
                        "then try again."));
}

TEST_F(Start, Can_be_cancelled)
{
    begin("engine");
    mac("fault docker hang --when pull*");
    openStep(4);
    pressButton("Start Pi-hole");
    pressButton("Cancel");
    EXPECT_TRUE(appears("Cancelled."));
}

TEST_F(Start, Says_which_file_could_not_be_written)
{
    begin("engine");
    ASSERT_TRUE(QDir().mkpath(PiholeController::composeFile() + QStringLiteral("/in the way")));
    openStep(4);
    pressButton("Start Pi-hole");
    EXPECT_TRUE(appearsWithReason("Could not write the Pi-hole files: "));
    ASSERT_TRUE(QDir(PiholeController::composeFile()).removeRecursively());

    ASSERT_TRUE(QDir().mkpath(PiholeController::environmentFile() + QStringLiteral("/in the way")));
    pressButton("Start Pi-hole");
    EXPECT_TRUE(appears("Could not write the Pi-hole files: Could not write the password file."));
    ASSERT_TRUE(QDir(PiholeController::environmentFile()).removeRecursively());
}

TEST_F(Start, Names_a_docker_that_has_gone_meanwhile)
{
    begin("engine");
    openStep(4);
    mac("fault docker vanish --at 4");
    pressButton("Start Pi-hole");
    EXPECT_TRUE(appears("docker was not found."));
}

} // namespace corvane::test
