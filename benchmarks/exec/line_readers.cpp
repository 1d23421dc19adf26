// Lines per second through the splitter, beside QTextStream, Python and Node, and what chunks and texts of other kinds
// cost.

#include "benchmarks/exec/measure.h"
#include "benchmarks/exec/peer.h"
#include "exec/line_splitter.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QTextStream>

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

using namespace corvane;
using namespace corvane::bench;

constexpr int kMebibytes = 32;
constexpr int kRounds = 15;
constexpr qsizetype kChunk = 64 * 1024;
constexpr double kGigabyte = 1e9;

const QByteArray kAscii("dnsmasq[53]: query[A] example.com from 127.0.0.1 and more words\n");
const QByteArray kUmlauts("dnsmasq[53]: gr\xc3\xbc\xc3\x9f"
                          "e query[A] b\xc3\xbc"
                          "cher.example.com\n");
const QByteArray kProgress("######################        55.1%\r");

QByteArray textOf(const QByteArray &line, int mebibytes)
{
    return line.repeated(qsizetype(mebibytes) * 1024 * 1024 / line.size());
}

void insist(bool claim, const char *what)
{
    if (claim) return;
    std::fprintf(stderr, "The measurement is void: %s\n", what);
    std::exit(2);
}

void split(const QByteArray &text, qsizetype chunk, qint64 expected)
{
    qint64 count = 0;
    LineSplitter splitter([&count](const QString &) { ++count; });
    for (qsizetype at = 0; at < text.size(); at += chunk)
        splitter.feed(QByteArrayView(text).sliced(at, std::min(chunk, text.size() - at)));
    splitter.flush();
    insist(count == expected, "the splitter lost lines");
}

void readAsStream(QByteArray &text, qint64 expected)
{
    QBuffer buffer(&text);
    buffer.open(QIODevice::ReadOnly);
    QTextStream stream(&buffer);
    qint64 count = 0;
    for (QString line; stream.readLineInto(&line);)
        ++count;
    insist(count == expected, "QTextStream lost lines");
}

/// The least that any such reader has to do: find the break and make the text.
void barely(const QByteArray &text, qint64 expected)
{
    qint64 count = 0;
    const std::function<void(QString)> emitLine = [&count](const QString &) { ++count; };
    const char *const end = text.data() + text.size();
    for (const char *at = text.data(); at < end;) {
        const auto *found = static_cast<const char *>(std::memchr(at, '\n', static_cast<std::size_t>(end - at)));
        emitLine(QString::fromLatin1(at, found - at));
        at = found + 1;
    }
    insist(count == expected, "the bare loop lost lines");
}

bool compareReaders()
{
    QByteArray text = textOf(kAscii, kMebibytes);
    const qint64 lines = text.size() / kAscii.size();
    const QStringList size{QString::number(kMebibytes)};
    Peer python(QStringLiteral("python3"), QStringList{QStringLiteral(BENCH_PEERS "/lines.py")} + size);
    Peer node(QStringLiteral("node"), QStringList{QStringLiteral(BENCH_PEERS "/lines.mjs")} + size);
    std::vector<Contender> contenders{
        {"splitter", [&] { split(text, kChunk, lines); }},
        {"a bare loop of memchr and QString::fromLatin1", [&] { barely(text, lines); }},
        {"QTextStream", [&] { readAsStream(text, lines); }},
        {"Python's splitlines", [&] { insist(python.round() == lines, "Python lost lines"); }},
        {"Node's readline", [&] { insist(node.round() == lines, "Node lost lines"); }},
    };
    takeTurns(contenders, kRounds);
    const double own = contenders[0].median();
    const double speed = static_cast<double>(text.size()) / own / kGigabyte;
    report("ASCII lines through the splitter, chunks of 64 KiB", speed, "GB/s", true, "by the ratio below");
    lowest(contenders[1].name, speed * own / contenders[1].median());
    for (std::size_t i = 2; i < contenders.size(); ++i)
        beside(contenders[i].name, speed * own / contenders[i].median());
    const double ratio = contenders[1].median() / own;
    return report("speed of ASCII lines beside the bare loop", ratio, "", ratio >= 0.6, "at least 0.6");
}

/// Such text in chunks of this size; the text must stay.
Contender splitting(const QByteArray &text, qsizetype chunk, qint64 lines)
{
    return {"", [&text, chunk, lines] { split(text, chunk, lines); }};
}

bool compareKinds()
{
    constexpr int kMiB = 8;
    const QByteArray texts[] = {textOf(kAscii, kMiB), textOf(kUmlauts, kMiB), textOf(kProgress, kMiB)};
    std::vector<Contender> contenders{splitting(texts[0], kChunk, texts[0].size() / kAscii.size()),
                                      splitting(texts[1], kChunk, texts[1].size() / kUmlauts.size()),
                                      splitting(texts[2], kChunk, texts[2].size() / kProgress.size())};
    takeTurns(contenders, kRounds);
    const double umlauts = contenders[1].median() / contenders[0].median();
    const double progress = contenders[2].median() / contenders[0].median();
    bool keeps = report("cost of lines with umlauts beside ASCII", umlauts, "", umlauts <= 5, "at most 5");
    keeps &= report("cost of lines that end in CR beside ASCII", progress, "", progress <= 4, "at most 4");
    return keeps;
}

/// The least that a reader of single bytes has to do: keep each, and make a text of them at the break.
void keepSingleBytes(const QByteArray &text, qint64 expected)
{
    qint64 count = 0;
    const std::function<void(QString)> emitLine = [&count](const QString &) { ++count; };
    QByteArray kept;
    for (const char byte : text) {
        if (byte != '\n') {
            kept.append(byte);
            continue;
        }
        emitLine(QString::fromUtf8(kept));
        kept.clear();
    }
    insist(count == expected, "the bare loop lost lines");
}

bool compareSingleBytes()
{
    const QByteArray text = textOf(kAscii, 1);
    const qint64 lines = text.size() / kAscii.size();
    std::vector<Contender> contenders{{"splitter", [&] { split(text, 1, lines); }},
                                      {"bare", [&] { keepSingleBytes(text, lines); }}};
    takeTurns(contenders, kRounds);
    const double ratio = contenders[0].median() / contenders[1].median();
    return report("chunks of one byte, cost beside keeping the bytes", ratio, "", ratio <= 8, "at most 8");
}

void plotChunks()
{
    const QByteArray text = textOf(kAscii, 1);
    std::vector<Contender> contenders;
    for (qsizetype chunk = 1; chunk <= kChunk; chunk *= 4)
        contenders.push_back(splitting(text, chunk, text.size() / kAscii.size()));
    takeTurns(contenders, kRounds);
    double chunk = 1;
    for (const Contender &each : contenders) {
        point("cost of a byte (ns) by size of the chunk (bytes)", chunk,
              each.median() / static_cast<double>(text.size()) * kGigabyte);
        chunk *= 4;
    }
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const bool readersKeep = compareReaders();
    const bool kindsKeep = compareKinds();
    const bool singleKeep = compareSingleBytes();
    plotChunks();
    return readersKeep && kindsKeep && singleKeep ? 0 : 1;
}
