#pragma once

#include <QByteArrayView>

#include <array>
#include <cstdint>

namespace corvane {

/// Where a line ends in UTF-8 text, and how many bytes the break takes: one for LF, VT, FF and a lone CR, two for CR LF
/// and U+0085, three for U+2028 and U+2029; none when no further line ends.
struct LineBreak {
    qsizetype place;
    qsizetype length;
};

/// Finds the line breaks of UTF-8 text one after another, many bytes at a time.
class LineBreaks {
public:
    LineBreaks(QByteArrayView bytes, qsizetype from);

    [[nodiscard]] LineBreak next();
    [[nodiscard]] bool ascii() const { return m_ascii; }

private:
    static constexpr qsizetype kBlock = 32;
    static constexpr qsizetype kWord = sizeof(std::uint64_t);

    [[nodiscard]] LineBreak nextLineFeed();
    [[nodiscard]] LineBreak nextOfAny();
    [[nodiscard]] qsizetype nextCandidate();
    void mark(qsizetype place);

    QByteArrayView m_bytes;
    qsizetype m_after;
    bool m_ascii;
    bool m_onlyLineFeeds;
    /// A byte for each byte of the block: one where a break may begin, until it has been looked at.
    std::array<std::uint64_t, kBlock / kWord> m_marks{};
    qsizetype m_block;
    std::size_t m_word = 0;
};

/// How many bytes at the end may begin a line break of several bytes whose rest has yet to come. A CR is none of them:
/// it ends its line at once.
[[nodiscard]] qsizetype begunLineBreak(QByteArrayView bytes);

} // namespace corvane
