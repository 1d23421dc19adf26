#include "exec/line_breaks.h"

#include <bit>
#include <cstring>

namespace corvane {

namespace {

/// Whether a line break may begin with this byte: LF to CR, C2 of U+0085, E2 of U+2028 and U+2029. Neither C2 nor E2
/// is ever inside a character, so no text before it can change what it means.
constexpr bool mayBreak(uchar byte) { return static_cast<uchar>(byte - '\n') <= '\r' - '\n' || (byte | 0x20) == 0xE2; }

/// How long the break is that begins here; none when these bytes are another character, or their rest has yet to come.
qsizetype breakLength(const uchar *bytes, qsizetype left)
{
    switch (bytes[0]) {
    case '\r':
        return left > 1 && bytes[1] == '\n' ? 2 : 1;
    case 0xC2:
        return left > 1 && bytes[1] == 0x85 ? 2 : 0;
    case 0xE2:
        return left > 2 && bytes[1] == 0x80 && (bytes[2] | 1) == 0xA9 ? 3 : 0;
    default:
        return 1;
    }
}

const uchar *begin(QByteArrayView bytes) { return reinterpret_cast<const uchar *>(bytes.data()); }

} // namespace

LineBreaks::LineBreaks(QByteArrayView bytes, qsizetype from)
    : m_bytes(bytes)
    , m_after(from)
    , m_block(from)
{
    uchar all = 0;
    uchar rare = 0;
    for (const char each : bytes) {
        const auto byte = static_cast<uchar>(each);
        all |= byte;
        rare |= static_cast<uchar>(static_cast<uchar>(byte - '\v') <= '\r' - '\v');
    }
    m_ascii = all < 0x80;
    m_onlyLineFeeds = m_ascii && rare == 0;
    if (!m_onlyLineFeeds) mark(from);
}

LineBreak LineBreaks::next() { return m_onlyLineFeeds ? nextLineFeed() : nextOfAny(); }

/// The system's own search is as fast as the machine can read.
LineBreak LineBreaks::nextLineFeed()
{
    const QByteArrayView rest = m_bytes.sliced(m_after);
    const void *found =
        rest.isEmpty() ? nullptr : std::memchr(rest.data(), '\n', static_cast<std::size_t>(rest.size()));
    if (found == nullptr) return {m_bytes.size(), 0};
    const qsizetype place = static_cast<const char *>(found) - m_bytes.data();
    m_after = place + 1;
    return {place, 1};
}

LineBreak LineBreaks::nextOfAny()
{
    for (qsizetype place = nextCandidate(); place < m_bytes.size(); place = nextCandidate()) {
        if (place < m_after) continue; // the LF of a CR LF
        const qsizetype length = breakLength(begin(m_bytes) + place, m_bytes.size() - place);
        if (length == 0) continue;
        m_after = place + length;
        return {place, length};
    }
    return {m_bytes.size(), 0};
}

/// The first byte not yet looked at with which a break may begin, or the end.
qsizetype LineBreaks::nextCandidate()
{
    static_assert(std::endian::native == std::endian::little);
    for (;;) {
        for (; m_word < m_marks.size(); ++m_word) {
            std::uint64_t &word = m_marks[m_word];
            if (word == 0) continue;
            const qsizetype place = m_block + static_cast<qsizetype>(m_word) * kWord + std::countr_zero(word) / 8;
            word &= word - 1;
            return place;
        }
        if (m_bytes.size() - m_block <= kBlock) return m_bytes.size();
        mark(m_block + kBlock);
    }
}

/// Marks the block that begins at this place. The loop has no way out, so that the compiler takes many bytes at a time.
void LineBreaks::mark(qsizetype place)
{
    m_block = place;
    m_word = 0;
    const qsizetype left = m_bytes.size() - place;
    std::array<uchar, kBlock> rest{};
    const uchar *block = begin(m_bytes) + place;
    if (left < kBlock) {
        if (left > 0) std::memcpy(rest.data(), block, static_cast<std::size_t>(left));
        block = rest.data();
    }
    std::array<uchar, kBlock> marks;
    for (std::size_t i = 0; i < marks.size(); ++i)
        marks[i] = static_cast<uchar>(mayBreak(block[i]));
    std::memcpy(m_marks.data(), marks.data(), marks.size());
}

qsizetype begunLineBreak(QByteArrayView bytes)
{
    if (bytes.isEmpty()) return 0;
    const auto last = static_cast<uchar>(bytes.back());
    if (last == 0xC2 || last == 0xE2) return 1;
    return last == 0x80 && bytes.endsWith("\xE2\x80") ? 2 : 0;
}

} // namespace corvane
