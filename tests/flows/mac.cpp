#include "tests/flows/mac.h"

#include <QJsonDocument>
#include <QLocalSocket>
#include <gtest/gtest.h>

namespace corvane::test {

namespace {

constexpr int kPatience = 20'000; // milliseconds

QJsonObject ask(const QStringList &words)
{
    QLocalSocket socket;
    socket.connectToServer(QStringLiteral("/run/simmac/control.sock"));
    if (!socket.waitForConnected(kPatience)) return {{QStringLiteral("error"), socket.errorString()}};
    const QJsonObject request{{QStringLiteral("command"), QJsonArray::fromStringList(words)}};
    socket.write(QJsonDocument(request).toJson(QJsonDocument::Compact) + '\n');
    while (!socket.canReadLine() && socket.waitForReadyRead(kPatience)) {
    }
    return QJsonDocument::fromJson(socket.readLine()).object();
}

} // namespace

QJsonValue Mac::ctl(const QString &command) { return ctl(command.split(u' ', Qt::SkipEmptyParts)); }

QJsonValue Mac::ctl(const QStringList &words)
{
    const QJsonObject answer = ask(words);
    if (!answer.contains(QLatin1String("result"))) {
        ADD_FAILURE() << words.join(u' ').toStdString() << ": "
                      << QJsonDocument(answer).toJson(QJsonDocument::Compact).toStdString();
    }
    return answer.value(QLatin1String("result"));
}

void Mac::reset(const QString &state) { ctl(QStringLiteral("reset ") + state); }

QList<QJsonObject> Mac::journal(const QString &tool)
{
    QList<QJsonObject> calls;
    const QJsonArray entries = ctl(QStringLiteral("journal ") + tool).toArray();
    for (const QJsonValue &entry : entries)
        calls.append(entry.toObject());
    return calls;
}

QStringList Mac::calls(const QString &tool)
{
    QStringList lines;
    const QList<QJsonObject> entries = journal(tool);
    for (const QJsonObject &entry : entries) {
        QStringList words;
        const QJsonArray argv = entry.value(QLatin1String("argv")).toArray();
        for (const QJsonValue &word : argv)
            words.append(word.toString());
        lines.append(words.join(u' '));
    }
    return lines;
}

int Mac::prompts() { return ctl(QStringLiteral("prompts")).toInt(); }

} // namespace corvane::test
