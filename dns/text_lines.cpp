#include "dns/text_lines.h"

namespace corvane {

namespace {

bool isBlank(QChar c) { return c == u' ' || c == u'\t'; }

} // namespace

QStringView trimmedBlanks(QStringView text)
{
    while (!text.isEmpty() && isBlank(text.front()))
        text = text.sliced(1);
    while (!text.isEmpty() && isBlank(text.back()))
        text.chop(1);
    return text;
}

QList<QStringView> trimmedLines(QStringView text)
{
    QList<QStringView> lines = text.split(u'\n');
    for (QStringView &line : lines)
        line = trimmedBlanks(line);
    return lines;
}

} // namespace corvane
