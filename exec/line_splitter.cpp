#include "exec/line_splitter.h"

#include <QStringDecoder>

#include <algorithm>
#include <utility>

namespace corvane {

namespace {

bool isLineBreak(QChar character)
{
    const char16_t code = character.unicode();
    return (code >= u'\n' && code <= u'\r') || code == u'\u0085' || code == u'\u2028' || code == u'\u2029';
}

/// How many bytes at the end begin a character that the next chunk may complete.
qsizetype incompleteTail(QByteArrayView bytes)
{
    const qsizetype longest = std::min<qsizetype>(3, bytes.size());
    for (qsizetype length = 1; length <= longest; ++length) {
        const auto byte = static_cast<uchar>(bytes[bytes.size() - length]);
        if (byte < 0x80) return 0;
        const qsizetype needed = byte >= 0xF0 ? 4 : byte >= 0xE0 ? 3 : 2;
        if (byte >= 0xC0) return length < needed ? length : 0;
    }
    return 0;
}

} // namespace

LineSplitter::LineSplitter(std::function<void(QString)> emitLine)
    : m_emit(std::move(emitLine))
{}

void LineSplitter::feed(QByteArrayView chunk)
{
    QByteArray joined;
    if (!m_incomplete.isEmpty()) {
        joined = std::exchange(m_incomplete, QByteArray()).append(chunk);
        chunk = joined;
    }
    const qsizetype tail = incompleteTail(chunk);
    m_incomplete = chunk.last(tail).toByteArray();
    decode(chunk.chopped(tail));
}

// Stateless on purpose: Qt's decoder with a memory drops the byte after a character that broke off between two chunks.
void LineSplitter::decode(QByteArrayView bytes)
{
    QStringDecoder decoder(QStringDecoder::Utf8,
                           QStringDecoder::Flag::Stateless | QStringDecoder::Flag::ConvertInitialBom);
    const QString text = decoder.decode(bytes);
    cut(text);
}

void LineSplitter::cut(QStringView text)
{
    qsizetype lineStart = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const bool secondHalf = std::exchange(m_swallowLineFeed, text[i] == u'\r') && text[i] == u'\n';
        if (secondHalf) {
            lineStart = i + 1;
        } else if (isLineBreak(text[i])) {
            m_pending += text.sliced(lineStart, i - lineStart);
            m_emit(std::exchange(m_pending, QString()));
            lineStart = i + 1;
        }
    }
    m_pending += text.sliced(lineStart);
}

void LineSplitter::flush()
{
    decode(std::exchange(m_incomplete, QByteArray()));
    if (!m_pending.isEmpty()) m_emit(std::exchange(m_pending, QString()));
}

} // namespace corvane
