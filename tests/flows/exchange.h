#pragma once

#include "runtime/pihole_controller.h"
#include "tests/flows/flow_test.h"
#include "tests/flows/pihole_files.h"

namespace corvane::test {

/// A set-up Mac whose container is of 2026.09.0 with its admin page on port 8080, and what should agree with that.
class ExchangeTest : public FlowTest {
protected:
    ExchangeTest()
        : FlowTest(QStringLiteral("running"))
    {
        Mac::ctl(QStringLiteral("pihole login-limit 100")); // the tests before this one logged in, too
        model().setWizardFinished(true);
        model().setLatestTag(kNewTag);
    }

    /// Begins an update and lets it come to the command that does not end by itself.
    void updateUpTo(const QString &command)
    {
        Mac::ctl({QStringLiteral("fault"), QStringLiteral("docker"), QStringLiteral("hang"), QStringLiteral("--when"),
                  command + QStringLiteral(" *")});
        launch(model().performUpdate());
        waitForCall(command);
    }

    void waitForCall(const QString &command)
    {
        const auto called = [command] {
            const QStringList calls = Mac::calls(QStringLiteral("docker"));
            return std::ranges::any_of(calls, [&](const QString &call) { return call.startsWith(command + u' '); });
        };
        waitFor(called, "docker's command");
    }

    /// What a start of Corvane does: it looks at the container, and then compares.
    void compare()
    {
        run(model().refreshStatus(Stats::Leave));
        run(model().putRight());
    }

    /// A setting that was never changed has its default.
    bool isStored(const char *key, const QVariant &value)
    {
        const QVariant stored = settings.value(QString::fromLatin1(key));
        return !stored.isValid() || stored == value;
    }

    void expectAllOf(const QString &tag, int port)
    {
        EXPECT_EQ(model().pinnedTag(), tag);
        EXPECT_TRUE(isStored("pinnedTag", tag));
        EXPECT_EQ(PiholeFiles::composeTag(), tag);
        EXPECT_EQ(model().webPort(), port);
        EXPECT_TRUE(isStored("webPort", port));
        EXPECT_EQ(PiholeFiles::composePort(), port);
        EXPECT_TRUE(PiholeFiles::environmentIsWhole(model().adminPassword()));
    }

    QString versionNote() { return model().notes().value(QStringLiteral("version")).toString(); }

    const QString kOldTag = QStringLiteral("2026.09.0");
    const QString kNewTag = QStringLiteral("2026.10.0");
    const char *const kRolledBack = "The update did not finish; the pinned version is back to 2026.09.0. Use "
                                    "Start/Restart if Pi-hole is not running.";
};

} // namespace corvane::test
