#include "tests/ui/screen.h"
#include "tests/ui/states.h"

#include <QTest>

namespace corvane::test {

namespace {

/// An operation as the install step shows it.
class OperationLog : public Screen {
protected:
    void run(const char *script)
    {
        CommandStep step;
        step.label = QStringLiteral("a step");
        step.exe = QStringLiteral("/bin/sh");
        step.args = {QStringLiteral("-c"), QString::fromLatin1(script)};
        m_app.installOp()->start(QStringLiteral("Making something"), {step});
        QTest::qWait(50);
    }
    void waitForEnd()
    {
        ASSERT_TRUE(QTest::qWaitFor([this] { return m_app.installOp()->ended(); }));
    }
};

TEST_F(OperationLog, Shows_nothing_before_its_first_run)
{
    openStep(2);
    EXPECT_FALSE(shows(QStringLiteral("installLog")));
}

TEST_F(OperationLog, While_it_runs_it_can_be_cancelled)
{
    openStep(2);
    run("echo one; sleep 30");
    EXPECT_TRUE(texts().contains(QStringLiteral("Making something")));
    EXPECT_TRUE(texts().contains(QStringLiteral("Live log")));
    click(QStringLiteral("installLogCancel"));
    waitForEnd();
    EXPECT_TRUE(texts().contains(QStringLiteral("Cancelled.")));
    EXPECT_FALSE(shows(QStringLiteral("installLogCancel")));
}

TEST_F(OperationLog, A_good_end_says_finished)
{
    openStep(2);
    run("echo done");
    waitForEnd();
    EXPECT_TRUE(texts().contains(QStringLiteral("Finished.")));
    EXPECT_TRUE(shows(QStringLiteral("installLogDetailsHeader")));
}

TEST_F(OperationLog, A_bad_end_says_why_and_offers_the_details)
{
    openStep(2);
    run("echo trouble; exit 3");
    waitForEnd();
    EXPECT_FALSE(m_app.installOp()->failureText().isEmpty());
    EXPECT_TRUE(texts().contains(m_app.installOp()->failureText()));
    EXPECT_FALSE(shows(QStringLiteral("installLogLogCanvas")));
    click(QStringLiteral("installLogDetailsHeader"));
    EXPECT_TRUE(shows(QStringLiteral("installLogLogCanvas")));
    EXPECT_EQ(find(QStringLiteral("installLogLogCanvas"))->height(), 160);
}

} // namespace

} // namespace corvane::test
