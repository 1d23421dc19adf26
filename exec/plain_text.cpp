#include "exec/plain_text.h"

#include "exec/line_splitter.h"

#include <QStringList>

#include <algorithm>

namespace corvane {

namespace {

constexpr char16_t kEscape = 0x1B;
constexpr char16_t kBell = 0x07;
constexpr char16_t kDelete = 0x7F;

bool isBetween(QChar c, char16_t first, char16_t last) { return c.unicode() >= first && c.unicode() <= last; }

/// The C1 controls come from broken encodings only, but a terminal would act on them.
bool isControl(QChar c) { return (c < u' ' && c != u'\t') || isBetween(c, kDelete, 0x9F); }

/// Where what follows "ESC [" ends: parameters, then one final character.
qsizetype endOfControlSequence(QStringView line, qsizetype i)
{
    while (i < line.size() && isBetween(line[i], 0x20, 0x3F))
        ++i;
    return i < line.size() && isBetween(line[i], 0x40, 0x7E) ? i + 1 : i;
}

/// Where what follows "ESC ]" and its like ends: at a bell, or before the escape of "ESC \".
qsizetype endOfString(QStringView line, qsizetype i)
{
    while (i < line.size() && line[i] != kBell && line[i] != kEscape)
        ++i;
    return i < line.size() && line[i] == kBell ? i + 1 : i;
}

/// Where the sequence that the escape at `i` begins has ended.
qsizetype endOfSequence(QStringView line, qsizetype i)
{
    if (++i == line.size()) return i;
    const QChar kind = line[i];
    if (kind == u'[') return endOfControlSequence(line, i + 1);
    if (QStringView(u"]PX^_").contains(kind)) return endOfString(line, i + 1);
    while (i < line.size() && isBetween(line[i], 0x20, 0x2F))
        ++i;
    return i < line.size() && isBetween(line[i], 0x30, 0x7E) ? i + 1 : i;
}

} // namespace

QString plainLine(const QString &line)
{
    if (std::ranges::none_of(line, isControl)) return line;
    QString plain;
    plain.reserve(line.size());
    for (qsizetype i = 0; i < line.size();) {
        if (line[i] == kEscape) {
            i = endOfSequence(line, i);
            continue;
        }
        if (!isControl(line[i])) plain += line[i];
        ++i;
    }
    return plain;
}

QString plainText(const QString &text)
{
    QStringList lines;
    LineSplitter splitter([&lines](const QString &line) { lines += plainLine(line); });
    splitter.feed(text.toUtf8());
    splitter.flush();
    return lines.join(u'\n');
}

} // namespace corvane
