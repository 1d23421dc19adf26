#include "runtime/failure_table.h"

#include <algorithm>
#include <ranges>

namespace corvane {

namespace {

bool tells(const QString &line, const KnownFailure &failure)
{
    return line.contains(failure.words, Qt::CaseInsensitive) &&
           (failure.andWords.isEmpty() || line.contains(failure.andWords, Qt::CaseInsensitive));
}

QString shownLine(const KnownFailure &failure, const QStringList &lines, const QString &recognised)
{
    if (failure.shown.isEmpty()) return recognised;
    const auto found = std::ranges::find_if(
        lines, [&](const QString &line) { return line.trimmed().startsWith(failure.shown, Qt::CaseInsensitive); });
    return found == lines.end() ? recognised : *found;
}

} // namespace

FailureReading firstKnown(std::span<const KnownFailure> table, const QStringList &lines)
{
    for (const KnownFailure &failure : table) {
        const auto backwards = std::views::reverse(lines);
        const auto found = std::ranges::find_if(backwards, [&](const QString &line) { return tells(line, failure); });
        if (found == backwards.end()) continue;
        return {failure.sentence, shownLine(failure, lines, *found).trimmed(), failure.remedy};
    }
    return {};
}

} // namespace corvane
