#include "tests/flows/flow_test.h"

#include <QElapsedTimer>
#include <QJsonDocument>
#include <QLocale>

namespace corvane::test {

namespace {

class Feed : public FlowTest {
protected:
    Feed()
        : FlowTest(QStringLiteral("running"))
    {}

    std::string check()
    {
        run(model().checkForUpdates());
        return model().updateMessage().toStdString();
    }
    std::string checkWith(const QStringList &feed)
    {
        Mac::ctl(QStringLiteral("feed normal"));
        Mac::ctl(QStringList(QStringLiteral("feed")) + feed);
        return check();
    }
    std::string latest() { return model().latestTag().value_or(QStringLiteral("none")).toStdString(); }
};

const std::string kUnreadable = "Could not read the newest version.";
const std::string kNoAnswer = "Could not check for updates: ";

bool isTransportFailure(const std::string &message)
{
    return message.starts_with(kNoAnswer) && message.size() > kNoAnswer.size() + 3;
}

} // namespace

TEST_F(Feed, A_newer_version_is_offered_over_tls)
{
    EXPECT_EQ(check(), "Version 2026.10.0 is available (you have 2026.09.0).");
    EXPECT_EQ(latest(), "2026.10.0");
    EXPECT_TEXT(model().pinnedTag(), "2026.09.0");
}

TEST_F(Feed, The_question_tells_nothing_about_the_user)
{
    auto question = model().checkForUpdates();
    EXPECT_TEXT(model().updateMessage(), "Asking api.github.com for the newest version. Nothing about you is sent...");
    run(std::move(question));
    const QJsonArray requests = Mac::ctl(QStringLiteral("feed requests")).toArray();
    ASSERT_EQ(requests.size(), 1);
    EXPECT_TEXT(requests.first().toObject().value(QLatin1String("line")).toString(),
                "GET /repos/pi-hole/docker-pi-hole/releases/latest HTTP/1.1");
    QStringList headers;
    const QJsonArray sent = requests.first().toObject().value(QLatin1String("headers")).toArray();
    for (const QJsonValue &header : sent)
        headers.append(header.toString().toLower());
    EXPECT_TRUE(headers.contains(QStringLiteral("accept: application/vnd.github+json")))
        << headers.join(u'\n').toStdString();
    EXPECT_TRUE(headers.contains(QStringLiteral("user-agent: corvane"))) << headers.join(u'\n').toStdString();
    for (const char *telling : {"cookie", "authorization", "referer", "linux", "mac os", "2026.09.0"})
        EXPECT_FALSE(headers.join(u'\n').contains(QLatin1String(telling))) << telling;
}

TEST_F(Feed, The_users_language_stays_at_home)
{
    const QLocale before;
    QLocale::setDefault(QLocale(QLocale::Icelandic));
    check();
    QLocale::setDefault(before);
    const QByteArray requests = QJsonDocument(Mac::ctl(QStringLiteral("feed requests")).toArray()).toJson();
    EXPECT_TRUE(requests.contains("Accept-Language: en\"")) << requests.constData();
}

TEST_F(Feed, The_same_or_an_older_version_is_no_update)
{
    check();
    EXPECT_EQ(checkWith({QStringLiteral("tag"), QStringLiteral("2026.09.0")}),
              "You have the newest version (2026.09.0).");
    EXPECT_EQ(latest(), "none") << "an earlier offer is taken back";
    EXPECT_EQ(checkWith({QStringLiteral("tag"), QStringLiteral("2025.12.9")}),
              "You have the newest version (2026.09.0).");
}

TEST_F(Feed, Patches_are_compared_as_numbers)
{
    model().setPinnedTag(QStringLiteral("2026.09.10"));
    EXPECT_EQ(checkWith({QStringLiteral("tag"), QStringLiteral("2026.09.1")}),
              "You have the newest version (2026.09.10).");
    model().setPinnedTag(QStringLiteral("2026.09.9"));
    EXPECT_EQ(checkWith({QStringLiteral("tag"), QStringLiteral("2026.09.10")}),
              "Version 2026.09.10 is available (you have 2026.09.9).");
}

TEST_F(Feed, Only_a_tag_of_the_stated_form_is_taken)
{
    for (const char *tag : {"v2026.10.0", "2026.10.0-rc1", "2026.10", "latest", "2026.10.0\n", "2026.10.0;id", "",
                            "../../x", "2026.10.0 "}) {
        EXPECT_EQ(checkWith({QStringLiteral("tag"), QString::fromUtf8(tag)}), kUnreadable) << tag;
        EXPECT_EQ(latest(), "none") << tag;
    }
}

TEST_F(Feed, A_body_that_is_no_release_cannot_be_read)
{
    for (const char *body : {"", "[]", "null", "<html>Please log in to this network.</html>",
                             R"({"tag_name":20261000})", R"({"name":"2026.10.0"})", R"({"tag_name":"2026.10.0")"}) {
        EXPECT_EQ(checkWith({QStringLiteral("body"), QString::fromUtf8(body)}), kUnreadable) << body;
    }
    EXPECT_EQ(checkWith({QStringLiteral("body"), QString(QStringLiteral("[")).repeated(200'000)}), kUnreadable);
}

TEST_F(Feed, A_refusal_holds_no_version)
{
    for (const char *status : {"403", "404", "429", "500", "503"}) {
        Mac::ctl(QStringLiteral("feed normal"));
        Mac::ctl({QStringLiteral("feed"), QStringLiteral("body"),
                  QStringLiteral(R"({"message":"API rate limit exceeded"})")});
        Mac::ctl(QStringLiteral("feed status ") + QLatin1String(status));
        EXPECT_EQ(check(), kUnreadable) << status;
    }
}

TEST_F(Feed, A_wrong_certificate_is_refused_before_anything_is_asked)
{
    const std::string message = checkWith({QStringLiteral("wrong-cert"), QStringLiteral("on")});
    EXPECT_TRUE(isTransportFailure(message)) << message;
    EXPECT_TRUE(Mac::ctl(QStringLiteral("feed requests")).toArray().isEmpty());
    EXPECT_EQ(latest(), "none");
}

TEST_F(Feed, A_redirect_to_plain_http_is_refused)
{
    const std::string message = checkWith({QStringLiteral("redirect"), QStringLiteral("http://127.0.0.1:8080/admin/")});
    EXPECT_TRUE(isTransportFailure(message)) << message;
}

TEST_F(Feed, A_redirect_in_a_circle_ends)
{
    const std::string message =
        checkWith({QStringLiteral("redirect"),
                   QStringLiteral("https://api.github.com/repos/pi-hole/docker-pi-hole/releases/latest")});
    EXPECT_TRUE(isTransportFailure(message)) << message;
}

TEST_F(Feed, An_endless_body_is_cut_off)
{
    QElapsedTimer time;
    time.start();
    const std::string message = checkWith({QStringLiteral("endless")});
    EXPECT_EQ(message, kNoAnswer + "The answer is too large.");
    EXPECT_LT(time.elapsed(), 9000) << "by its size, not by the time limit";
}

TEST_F(Feed, A_body_that_is_cut_short_is_no_answer)
{
    const std::string message = checkWith({QStringLiteral("cut")});
    EXPECT_TRUE(isTransportFailure(message)) << message;
}

// Before the one that lasts ten seconds, by when what hangs here has ended, too.
TEST_F(Feed, A_model_that_goes_away_during_the_check_ends_it_quietly)
{
    Mac::ctl(QStringLiteral("feed hang"));
    launch(model().checkForUpdates());
    relaunch();
    Mac::ctl(QStringLiteral("feed normal"));
    EXPECT_EQ(check(), "Version 2026.10.0 is available (you have 2026.09.0).");
}

TEST_F(Feed, A_drip_and_a_silence_end_after_ten_seconds)
{
    QElapsedTimer time;
    time.start();
    EXPECT_EQ(checkWith({QStringLiteral("slow")}), kNoAnswer + "The request timed out.");
    EXPECT_GE(time.elapsed(), 9000);
}

TEST_F(Feed, A_network_that_is_gone_is_told_in_the_networks_words)
{
    Mac::ctl(QStringLiteral("wifi off"));
    const std::string message = check();
    EXPECT_TRUE(isTransportFailure(message)) << message;
    EXPECT_EQ(latest(), "none");
}

TEST_F(Feed, A_failed_check_leaves_an_earlier_offer)
{
    check();
    checkWith({QStringLiteral("tag"), QStringLiteral("nonsense")});
    EXPECT_EQ(latest(), "2026.10.0");
}

} // namespace corvane::test
