#include "app/day_record.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace corvane {

namespace {

constexpr QByteArrayView kTitle = "corvane day 1";
constexpr QByteArrayView kEnd = "end";
constexpr qint64 kLatest = qint64{1} << 40;  // seconds since 1970
constexpr qint64 kMostAsked = 1'000'000'000; // in one slot
constexpr qsizetype kMostSlots = DayRecord::kKept / DayRecord::kSlot + 2;

/// The numbers after the line's first word; absent unless there are exactly so many.
std::optional<QList<qint64>> numbersIn(const QByteArray &line, qsizetype count)
{
    const QList<QByteArray> words = line.split(' ').sliced(1);
    if (words.size() != count) return std::nullopt;
    QList<qint64> numbers;
    for (const QByteArray &word : words) {
        bool good = false;
        numbers << word.toLongLong(&good);
        if (!good || numbers.last() < 0 || numbers.last() > kLatest) return std::nullopt;
    }
    return numbers;
}

bool readSpan(const QByteArray &line, QList<DaySpan> &spans)
{
    const auto numbers = numbersIn(line, 3);
    if (!numbers || spans.size() == DayRecord::kMostSpans) return false;
    const DaySpan span{numbers->at(0), numbers->at(1), static_cast<Protection>(numbers->at(2))};
    const bool inOrder = span.start <= span.end && (spans.isEmpty() || spans.last().end <= span.start);
    if (!inOrder || numbers->at(2) > static_cast<int>(Protection::Asleep)) return false;
    spans << span;
    return true;
}

bool readOwn(const QByteArray &line, QMap<qint64, OwnQuestions> &own)
{
    const auto numbers = numbersIn(line, 3);
    if (!numbers || own.size() == kMostSlots) return false;
    const OwnQuestions questions{numbers->at(1), numbers->at(2)};
    if (questions.asked > kMostAsked || questions.blocked > questions.asked) return false;
    own.insert(numbers->at(0), questions);
    return true;
}

} // namespace

void DayRecord::note(qint64 now, Protection state)
{
    cutAt(now);
    const bool goesOn = !std::exchange(m_interrupted, false) && !m_spans.isEmpty();
    if (goesOn && now - m_spans.last().end > kLongestSilence)
        m_spans << DaySpan{m_spans.last().end, now, Protection::Asleep};
    else if (goesOn)
        m_spans.last().end = now;
    if (!goesOn || m_spans.last().state != state) m_spans << DaySpan{now, now, state};
    forgetBefore(now - kKept);
}

void DayRecord::countOwn(qint64 now, bool blocked)
{
    OwnQuestions &questions = m_own[now / kSlot * kSlot];
    ++questions.asked;
    questions.blocked += blocked ? 1 : 0;
}

DayRecord DayRecord::continuedBy(const DayRecord &later) const
{
    DayRecord whole = *this;
    if (!later.m_spans.isEmpty()) whole.cutAt(later.m_spans.first().start);
    whole.m_spans += later.m_spans;
    whole.m_interrupted = later.m_spans.isEmpty();
    for (auto slot = later.m_own.begin(); slot != later.m_own.end(); ++slot) {
        whole.m_own[slot.key()].asked += slot->asked;
        whole.m_own[slot.key()].blocked += slot->blocked;
    }
    if (!whole.m_spans.isEmpty()) whole.forgetBefore(whole.m_spans.last().end - kKept);
    return whole;
}

/// A clock that was set back takes back what was noted of the time that is to come.
void DayRecord::cutAt(qint64 now)
{
    while (!m_spans.isEmpty() && m_spans.last().start > now)
        m_spans.removeLast();
    if (!m_spans.isEmpty()) m_spans.last().end = std::min(m_spans.last().end, now);
}

void DayRecord::forgetBefore(qint64 time)
{
    while (!m_spans.isEmpty() && (m_spans.first().end < time || m_spans.size() > kMostSpans))
        m_spans.removeFirst();
    while (!m_own.isEmpty() && m_own.firstKey() < time)
        m_own.erase(m_own.begin());
    while (m_own.size() > kMostSlots)
        m_own.erase(std::prev(m_own.end()));
}

QByteArray DayRecord::toBytes() const
{
    QByteArrayList lines{kTitle.toByteArray()};
    for (const DaySpan &span : m_spans)
        lines << "span " + QByteArray::number(span.start) + ' ' + QByteArray::number(span.end) + ' ' +
                     QByteArray::number(static_cast<int>(span.state));
    for (auto slot = m_own.begin(); slot != m_own.end(); ++slot)
        lines << "own " + QByteArray::number(slot.key()) + ' ' + QByteArray::number(slot->asked) + ' ' +
                     QByteArray::number(slot->blocked);
    lines << kEnd.toByteArray() << QByteArray();
    return lines.join('\n');
}

std::optional<DayRecord> DayRecord::fromBytes(const QByteArray &bytes)
{
    const QByteArrayList lines = bytes.split('\n');
    if (lines.size() < 3 || lines.first() != kTitle || lines.at(lines.size() - 2) != kEnd || !lines.last().isEmpty())
        return std::nullopt;
    DayRecord record;
    for (const QByteArray &line : lines.sliced(1, lines.size() - 3)) {
        const bool good = line.startsWith("span ") ? readSpan(line, record.m_spans)
                                                   : line.startsWith("own ") && readOwn(line, record.m_own);
        if (!good) return std::nullopt;
    }
    record.m_interrupted = true;
    return record;
}

} // namespace corvane
