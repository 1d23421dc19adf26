#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QJsonValue>
#include <QStringList>

namespace corvane::test {

/// The simulated Mac that this test program runs in, changed and questioned through its control socket.
class Mac {
public:
    /// Runs a control command, words separated by blanks; a refusal fails the test.
    static QJsonValue ctl(const QString &command);
    /// The same for words that hold blanks themselves.
    static QJsonValue ctl(const QStringList &words);

    /// Puts the Mac back as it was at the start, in the given state.
    static void reset(const QString &state);

    /// Every call of a tool since the reset, oldest first.
    static QList<QJsonObject> journal(const QString &tool = {});
    /// The arguments of every call of a tool, joined by blanks.
    static QStringList calls(const QString &tool);
    static int prompts();
};

} // namespace corvane::test
