#include "exec/line_splitter.h"

#include "exec/line_breaks.h"

#include <QStringDecoder>

#include <utility>

namespace corvane {

namespace {

/// Invalid sequences are repaired. The text may begin with a byte order mark, which stays.
QString textOf(QByteArrayView bytes)
{
    if (!bytes.startsWith("\xEF\xBB\xBF")) return QString::fromUtf8(bytes);
    QStringDecoder decoder(QStringDecoder::Utf8,
                           QStringDecoder::Flag::Stateless | QStringDecoder::Flag::ConvertInitialBom);
    return decoder.decode(bytes);
}

} // namespace

LineSplitter::LineSplitter(std::function<void(QString)> emitLine)
    : m_emit(std::move(emitLine))
{}

void LineSplitter::feed(QByteArrayView chunk)
{
    const qsizetype begun = begunLineBreak(m_unfinished);
    if (begun == 0) return cut(chunk);
    QByteArray joined = m_unfinished.last(begun);
    m_unfinished.chop(begun);
    joined.append(chunk);
    cut(joined);
}

void LineSplitter::cut(QByteArrayView bytes)
{
    qsizetype lineStart = 0;
    if (!bytes.isEmpty() && std::exchange(m_swallowLineFeed, false) && bytes.front() == '\n') lineStart = 1;
    LineBreaks breaks(bytes, lineStart);
    for (LineBreak found = breaks.next(); found.length > 0; found = breaks.next()) {
        const QByteArrayView end = bytes.sliced(lineStart, found.place - lineStart);
        if (breaks.ascii() && m_unfinished.isEmpty())
            m_emit(QString::fromLatin1(end));
        else
            emitLine(end);
        lineStart = found.place + found.length;
        m_swallowLineFeed = lineStart == bytes.size() && bytes.back() == '\r';
    }
    m_unfinished.append(bytes.sliced(lineStart));
}

void LineSplitter::emitLine(QByteArrayView end)
{
    if (m_unfinished.isEmpty()) return m_emit(textOf(end));
    m_unfinished.append(end);
    const QByteArray line = std::exchange(m_unfinished, QByteArray());
    m_emit(textOf(line));
}

void LineSplitter::flush()
{
    if (!m_unfinished.isEmpty()) emitLine({});
}

} // namespace corvane
