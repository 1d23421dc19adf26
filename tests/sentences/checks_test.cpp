#include "tests/sentences/on_screen.h"

#include <QRegularExpression>

namespace corvane::test {

namespace {

/// One Mac, what is done to it, and what "Check this Mac" then says.
struct Case {
    const char *state;
    std::initializer_list<const char *> orders;
    std::initializer_list<const char *> sentences;
};

class Checks : public OnScreen {};

} // namespace

TEST_F(Checks, Say_what_they_found)
{
    const Case cases[] = {
        {"bare",
         {"macos 14.5.1"},
         {"Apple silicon", "This is an Apple silicon Mac.", "macOS version", "macOS 14.5 is supported.", "Homebrew",
          "Not found. It is needed to install Colima and Docker (the wizard never installs Homebrew for you).",
          "docker", "colima", "Not found. Step 3 can install it.", "Ports 53 and 8080",
          "macOS did not let this app test every port without administrator rights. The real test happens when Pi-hole "
          "starts."}},
        {"bare",
         {"arm64 no", "macos 12.7"},
         {"This looks like an Intel Mac. Pi-hole also has an Intel image, but this wizard was designed for Apple "
          "silicon.",
          "macOS 12.7 is too old. macOS 13 or newer is needed."}},
        {"stopped", {"port53 grant"}, {"Found.", "/opt/homebrew/bin/docker", "/opt/homebrew/bin/colima", "All free."}},
        {"stopped", {"fault brew vanish", "port53 deny"}, {"Not found, but you do not need it right now."}},
        {"stopped",
         {"take-port 8080 tcp --as httpd"},
         {"At least one port is already in use. Details are below.", "TCP 8080 on 127.0.0.1 is in use by:"}},
        {"stopped",
         {"take-port 8080 tcp --as httpd", "fault lsof fail"},
         {"No process is visible to this app (it may belong to the system or another user)."}},
        {"running", {}, {"Used by the Pi-hole container, as expected."}},
    };
    for (const Case &each : cases) {
        begin(each.state);
        for (const char *order : each.orders)
            mac(order);
        openStep(2);
        for (const char *sentence : each.sentences)
            EXPECT_TRUE(appears(sentence)) << each.state;
    }
}

TEST_F(Checks, Name_the_program_that_holds_a_port)
{
    begin("stopped");
    mac("take-port 8080 tcp --as httpd");
    openStep(2);
    EXPECT_TRUE(appears("TCP 8080 on 127.0.0.1 is in use by:"));
    const QStringList all = texts();
    EXPECT_FALSE(all.filter(QRegularExpression(QStringLiteral("^COMMAND.*\nhttpd "))).isEmpty())
        << all.join(u'\n').toStdString();
}

TEST_F(Checks, A_port_that_is_taken_meanwhile_is_told_where_it_was_chosen)
{
    begin("stopped");
    mac("take-port 8080 tcp --as httpd");
    openStep(2);
    EXPECT_TRUE(appears("Use another port for the admin page:"));
    mac("take-port 8083 tcp --as nginx");
    pick("freePortPicker", "8083");
    EXPECT_TRUE(appears("Port 8083 is already in use."));
    settle();
    pick("freePortPicker", "8084");
    EXPECT_TRUE(appear({"Ports 53 and 8084"}));
}

} // namespace corvane::test
