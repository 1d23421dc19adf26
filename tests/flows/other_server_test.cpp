#include "tests/flows/in_state.h"

namespace corvane::test {

namespace {

const char *const kSentence = "Another DNS server than Pi-hole answers on 127.0.0.1. Stop it, so that Pi-hole can have "
                              "port 53.";

/// What answers on this Mac blocks nothing and does not know the name that every Pi-hole knows.
class OtherServer : public Running {
protected:
    OtherServer()
    {
        run(model().pauseBlocking(PauseLength::FiveMinutes));
        Mac::ctl(QStringLiteral("fault dig fail 9 --when *pi.hole*"));
    }

    QString note(const char *about) { return model().notes().value(QString::fromLatin1(about)).toString(); }
};

} // namespace

TEST_F(OtherServer, Is_told_beside_a_blocking_test_that_it_answered)
{
    run(model().runBlockingTest());
    EXPECT_TEXT(note("blocking"), kSentence);
}

TEST_F(OtherServer, Is_told_beside_the_tests_of_pihole)
{
    run(model().runPiholeTests(Wait::No));
    EXPECT_TEXT(note("pihole"), kSentence);
}

} // namespace corvane::test
