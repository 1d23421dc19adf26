#include "remote/command_line.h"

#include "exec/plain_text.h"

namespace corvane::remote {

namespace {

using Kind = Request::Kind;
using Wish = CommandLine::Wish;

CommandLine wrong(const QString &mistake) { return {Wish::Nothing, {}, false, mistake}; }

CommandLine wrongWord(const QByteArray &word)
{
    return wrong(QStringLiteral("Corvane does not know the word \"%1\".").arg(plainLine(QString::fromUtf8(word))));
}

CommandLine pause(const QByteArrayList &words)
{
    const auto length = words.size() == 2 ? readLength(words[1]) : std::nullopt;
    if (!length)
        return wrong(
            QStringLiteral("Say how long, for example \"pause 30s\", \"pause 5m\" or \"pause 1h\"; at most 24h."));
    return {Wish::Ask, {Kind::Pause, *length}};
}

CommandLine status(const QByteArrayList &words)
{
    if (words.size() == 1) return {Wish::Ask, {Kind::Status}};
    const bool json = words.size() == 2 && words[1] == "--json";
    return json ? CommandLine{Wish::Ask, {Kind::Status}, true} : wrongWord(words.last());
}

CommandLine alone(const QByteArrayList &words, const CommandLine &meant)
{
    return words.size() == 1 ? meant : wrongWord(words[1]);
}

} // namespace

CommandLine CommandLine::of(const QByteArrayList &words)
{
    if (words.isEmpty()) return {};
    const QByteArray &first = words.first();
    if (first == "status") return status(words);
    if (first == "pause") return pause(words);
    if (first == "resume") return alone(words, {Wish::Ask, {Kind::Resume}});
    if (first == "restore-dns") return alone(words, {Wish::Ask, {Kind::RestoreDns}});
    if (first == "--help" || first == "-h") return {Wish::Help};
    if (first == "--version") return {Wish::Version};
    const bool isOurs = !first.startsWith('-') || first.startsWith("--");
    return isOurs ? wrongWord(first) : CommandLine();
}

QString CommandLine::help()
{
    return QStringLiteral("Usage: Corvane [command]\n"
                          "\n"
                          "Without a command Corvane opens. When it runs already, it comes to the front.\n"
                          "\n"
                          "  status [--json]  says in one line how Pi-hole is\n"
                          "  pause LENGTH     pauses blocking, for example for 30s, 5m or 1h (at most 24h)\n"
                          "  resume           switches blocking on again\n"
                          "  restore-dns      puts your old DNS servers back; Corvane asks you first\n"
                          "  --help           shows this text\n"
                          "  --version        shows the version\n"
                          "\n"
                          "The commands are carried out by the Corvane that runs.\n"
                          "\n"
                          "Exit status of \"status\", by the dot: 0 green, 1 orange, 2 red, 3 gray (stopped),\n"
                          "4 gray (not checked yet). Of the others: 0 done, 1 not done.\n"
                          "Of all: 5 Corvane is not running, 6 it does not answer, 64 wrong use.\n");
}

} // namespace corvane::remote
