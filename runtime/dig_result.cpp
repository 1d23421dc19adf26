#include "runtime/dig_result.h"

#include <QRegularExpression>

namespace corvane {

namespace {

/// A record is at least a name, a time to live, a class, a type and its data.
constexpr qsizetype kRecordColumns = 5;

QString parseStatus(const QString &text)
{
    static const QRegularExpression pattern(QStringLiteral("status: ([A-Z]+)"));
    return pattern.match(text).captured(1);
}

QList<QStringView> columnsOf(QStringView line)
{
    QList<QStringView> columns;
    for (const QStringView part : line.split(u' ', Qt::SkipEmptyParts)) {
        columns += part.split(u'\t', Qt::SkipEmptyParts);
    }
    return columns;
}

QStringList parseAnswers(const QString &text)
{
    QStringList answers;
    for (const QStringView line : QStringView(text).split(u'\n')) {
        const QList<QStringView> columns = columnsOf(line);
        if (columns.size() < kRecordColumns || columns.first().startsWith(u';')) continue;
        answers += columns.last().toString();
    }
    return answers;
}

} // namespace

bool DigResult::answered() const { return ok && status == u"NOERROR" && !answers.isEmpty(); }

bool DigResult::stale() const
{
    static const QRegularExpression extendedError(QStringLiteral("^; EDE: 3\\b"), QRegularExpression::MultilineOption);
    return extendedError.match(output).hasMatch();
}

DigResult DigResult::parse(const CommandResult &result)
{
    const QString status = parseStatus(result.standardOutput);
    return {
        .ok = result.status == 0 && !status.isEmpty(),
        .status = status,
        .answers = parseAnswers(result.standardOutput),
        .output = result.combined(),
    };
}

} // namespace corvane
