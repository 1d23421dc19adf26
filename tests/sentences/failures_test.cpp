#include "runtime/tool_failures.h"
#include "tests/sentences/on_screen.h"

#include <QDir>
#include <QFile>

namespace corvane::test {

namespace {

/// What the steps of the set-up say when a tool fails in words that leave no doubt.
class Failures : public OnScreen {
protected:
    struct Scene {
        QString tool;
        const char *state;
        int step;
        const char *when;
        const char *button;
    };

    static Scene sceneOf(const QString &file)
    {
        if (file.startsWith(QLatin1String("brew")))
            return {QStringLiteral("brew"), "homebrew", 3, "install*", "Install Colima and Docker"};
        if (file.startsWith(QLatin1String("colima")))
            return {QStringLiteral("colima"), "stopped", 3, "start*", "Start Colima"};
        return {QStringLiteral("docker"), "engine", 4, "pull*", "Start Pi-hole"};
    }

    void failsLike(const QString &file)
    {
        QFile recorded(QStringLiteral(CORVANE_TEST_DATA "/tools/failures/") + file);
        ASSERT_TRUE(recorded.open(QIODevice::ReadOnly));
        const QString words = QString::fromUtf8(recorded.readAll().trimmed());
        const Scene scene = sceneOf(file);
        FailedStep failed;
        failed.step.exe = u'/' + scene.tool;
        failed.lines = words.split(u'\n', Qt::SkipEmptyParts);
        const FailureReading reading = ToolFailures::read(failed);
        if (reading.sentence.isEmpty() || m_seen.contains(reading.sentence)) return;
        m_seen << reading.sentence;

        begin(scene.state);
        openStep(scene.step);
        Mac::ctl({QStringLiteral("fault"), scene.tool, QStringLiteral("fail"), QStringLiteral("1"), words,
                  QStringLiteral("--when"), QString::fromLatin1(scene.when)});
        pressButton(scene.button);
        EXPECT_TRUE(appears(reading.sentence.toUtf8())) << file.toStdString();
        EXPECT_TRUE(appears(reading.line.toUtf8())) << file.toStdString();
        settle();
    }

    QStringList m_seen;
};

} // namespace

TEST_F(Failures, Are_told_as_what_they_are_above_the_tools_own_line)
{
    const QDir recorded(QStringLiteral(CORVANE_TEST_DATA "/tools/failures"));
    for (const QString &file : recorded.entryList(QDir::Files))
        failsLike(file);
    EXPECT_GE(m_seen.size(), 30);
}

} // namespace corvane::test
