// Lines per second through the splitter and into an operation's log, without any child.

#include "exec/line_splitter.h"
#include "exec/operation_runner.h"

#include <benchmark/benchmark.h>

namespace {

using namespace corvane;

constexpr int kLinesAChunk = 800;

QByteArray chunkOf(const QByteArray &line)
{
    QByteArray chunk;
    for (int i = 0; i < kLinesAChunk; ++i)
        chunk += line;
    return chunk;
}

void splitLines(benchmark::State &state, const QByteArray &line)
{
    const QByteArray chunk = chunkOf(line);
    qint64 count = 0;
    LineSplitter splitter([&count](const QString &) { ++count; });
    for (auto _ : state)
        splitter.feed(chunk);
    if (count != state.iterations() * kLinesAChunk) state.SkipWithError("lines were lost");
    state.SetItemsProcessed(count);
    state.SetBytesProcessed(state.iterations() * chunk.size());
}

void appendLines(benchmark::State &state)
{
    OperationRunner runner([](const QString &) { return QString(); });
    const QString line = QStringLiteral("time=2026-11-21 level=info msg=starting");
    for (auto _ : state)
        runner.append(line);
    if (runner.lineCount() != state.iterations()) state.SkipWithError("lines were lost");
    state.SetItemsProcessed(state.iterations());
}

BENCHMARK_CAPTURE(splitLines, ascii, QByteArray("dnsmasq[53]: query[A] example.com from 127.0.0.1 and more words\n"));
BENCHMARK_CAPTURE(splitLines, umlauts,
                  QByteArray("dnsmasq[53]: gr\xc3\xbc\xc3\x9f"
                             "e query[A] b\xc3\xbc"
                             "cher.example.com\n"));
BENCHMARK_CAPTURE(splitLines, progress, QByteArray("######################        55.1%\r"));
BENCHMARK(appendLines);

} // namespace

BENCHMARK_MAIN();
