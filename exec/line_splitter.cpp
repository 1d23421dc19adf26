#include "exec/line_splitter.h"

#include <utility>

namespace corvane {

namespace {

bool isLineBreak(QChar character)
{
    const char16_t code = character.unicode();
    return (code >= u'\n' && code <= u'\r') || code == u'\u0085' || code == u'\u2028' || code == u'\u2029';
}

} // namespace

LineSplitter::LineSplitter(std::function<void(QString)> emitLine)
    : m_emit(std::move(emitLine))
{}

void LineSplitter::feed(QByteArrayView chunk)
{
    const QString text = m_decoder.decode(chunk);
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
    // A character that the stream broke off in its middle shows only when another byte follows it.
    QString rest = m_decoder.decode(QByteArrayView("\n"));
    rest.chop(1);
    m_pending += rest;
    if (!m_pending.isEmpty()) m_emit(std::exchange(m_pending, QString()));
}

} // namespace corvane
