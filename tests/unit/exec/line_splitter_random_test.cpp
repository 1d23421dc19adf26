#include "exec/line_splitter.h"

#include <QStringDecoder>
#include <QStringList>
#include <gtest/gtest.h>

#include <array>
#include <random>

namespace corvane::test {

namespace {

constexpr unsigned kSeed = 20261121;

/// The plainest way to do it: all bytes become text, and the text is cut character by character.
QStringList plainly(const QByteArray &bytes)
{
    QStringDecoder decoder(QStringDecoder::Utf8,
                           QStringDecoder::Flag::Stateless | QStringDecoder::Flag::ConvertInitialBom);
    const QString text = decoder.decode(bytes);
    QStringList lines;
    QString line;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const char16_t code = text[i].unicode();
        if (code == u'\n' && i > 0 && text[i - 1] == u'\r') continue;
        if ((code >= u'\n' && code <= u'\r') || code == u'\u0085' || code == u'\u2028' || code == u'\u2029') {
            lines << std::exchange(line, QString());
        } else {
            line += text[i];
        }
    }
    return line.isEmpty() ? lines : lines << line;
}

/// Texts of all kinds that lie near line breaks, whole and broken off.
QByteArray anyBytes(std::mt19937 &random, int pieces)
{
    static const std::array<QByteArray, 24> kPieces{"a",
                                                    "plain words, long enough for several blocks of 32 bytes",
                                                    "\n",
                                                    "\r",
                                                    "\r\n",
                                                    "\v",
                                                    "\f",
                                                    "\xC2\x85",
                                                    "\xC2",
                                                    "\x85",
                                                    "\xE2\x80\xA8",
                                                    "\xE2\x80\xA9",
                                                    "\xE2\x80",
                                                    "\xE2\x80\xAA",
                                                    "\xE2",
                                                    "\xEF\xBB\xBF",
                                                    "\xC3\xA4",
                                                    "\xF0\x9F\x90\xA7",
                                                    "\xF0\x9F",
                                                    "\xFF",
                                                    QByteArray("\0", 1),
                                                    "\xE7\x95\xA5",
                                                    "\xA8",
                                                    "\xED\xA0\x80"};
    QByteArray bytes;
    for (int i = 0; i < pieces; ++i)
        bytes += kPieces.at(random() % kPieces.size());
    return bytes;
}

QStringList cutAnywhere(const QByteArray &bytes, std::mt19937 &random)
{
    QStringList lines;
    LineSplitter splitter([&lines](QString line) { lines << line; });
    for (qsizetype at = 0; at < bytes.size();) {
        const qsizetype size = std::min<qsizetype>(1 + random() % 90, bytes.size() - at);
        splitter.feed(QByteArrayView(bytes).sliced(at, size));
        at += size;
    }
    splitter.flush();
    return lines;
}

} // namespace

TEST(LineSplitter, Any_bytes_cut_anywhere_give_the_lines_of_the_whole_text)
{
    std::mt19937 random(kSeed);
    for (int round = 0; round < 20'000; ++round) {
        const QByteArray bytes = anyBytes(random, 1 + static_cast<int>(random() % 30));
        ASSERT_EQ(cutAnywhere(bytes, random), plainly(bytes)) << bytes.toHex(' ').toStdString();
    }
}

TEST(LineSplitter, Any_bytes_at_once_give_the_lines_of_the_whole_text)
{
    std::mt19937 random(kSeed);
    for (int round = 0; round < 5'000; ++round) {
        const QByteArray bytes = anyBytes(random, 1 + static_cast<int>(random() % 300));
        QStringList lines;
        LineSplitter splitter([&lines](QString line) { lines << line; });
        splitter.feed(bytes);
        splitter.flush();
        ASSERT_EQ(lines, plainly(bytes)) << bytes.toHex(' ').toStdString();
    }
}

} // namespace corvane::test
