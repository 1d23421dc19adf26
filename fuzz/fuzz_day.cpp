#include "app/day_record.h"
#include "fuzz/require.h"

#include <algorithm>
#include <cstdint>

using namespace corvane;

namespace {

bool inOrder(const QList<DaySpan> &spans)
{
    qint64 last = 0;
    return std::ranges::all_of(spans, [&last](const DaySpan &span) {
        const bool good = span.start >= last && span.end >= span.start && span.state <= Protection::Asleep;
        last = span.end;
        return good;
    });
}

/// What was read goes on: with what follows it, and with what began without it.
void checkGoingOn(const DayRecord &before, qint64 now)
{
    DayRecord straight = before;
    straight.note(now, Protection::Backup);
    straight.note(now + 30, Protection::Protected);
    require(inOrder(straight.spans()) && straight.spans().size() <= DayRecord::kMostSpans);

    DayRecord later;
    later.note(now, Protection::Backup);
    later.countOwn(now, true);
    const DayRecord whole = before.continuedBy(later);
    require(inOrder(whole.spans()) && !whole.spans().isEmpty() && whole.spans().last() == later.spans().last());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    const auto record = DayRecord::fromBytes(bytes);
    if (!record) return 0;
    require(inOrder(record->spans()));
    const auto again = DayRecord::fromBytes(record->toBytes());
    require(again && again->toBytes() == record->toBytes() && again->spans() == record->spans());
    checkGoingOn(*record, record->spans().isEmpty() ? 0 : record->spans().first().end);
    checkGoingOn(*record, record->spans().isEmpty() ? 0 : record->spans().last().end + 60);
    return 0;
}
