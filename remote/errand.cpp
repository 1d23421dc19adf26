#include "remote/errand.h"

#include "dns/restore_script.h"
#include "remote/caller.h"
#include "remote/exit_status.h"

#include <QJsonDocument>

namespace corvane::remote {

namespace {

using Kind = Request::Kind;
using Wish = CommandLine::Wish;

constexpr QLatin1StringView kDoesNotRun{"Corvane is not running."};
constexpr QLatin1StringView kIsSilent{
    "Corvane is running, but does not answer. End it in Activity Monitor, then open it again."};

/// A restore waits for its user, who is asked twice.
constexpr int kUsersPatience = 15 * 60'000;

void print(std::FILE *file, const QString &text)
{
    const QByteArray line = text.toUtf8();
    std::fwrite(line.constData(), 1, static_cast<std::size_t>(line.size()), file);
    if (!line.endsWith('\n')) std::fputc('\n', file);
    std::fflush(file);
}

QString asJson(const QJsonObject &facts)
{
    return QString::fromUtf8(QJsonDocument(facts).toJson(QJsonDocument::Compact));
}

/// What can be done without Corvane.
QString remedy(Kind kind)
{
    if (kind == Kind::Pause || kind == Kind::Resume) return QStringLiteral(" Open it first.");
    if (kind != Kind::RestoreDns) return {};
    const QString script = RestoreScript::keep();
    if (script.isEmpty()) return QStringLiteral(" It has saved no DNS servers that could be put back.");
    return QStringLiteral(" This puts your old DNS servers back without it; open it in Finder or run it:\n\"%1\"")
        .arg(script);
}

/// Without an answer of Corvane's own.
int tellSilence(Silence silence, const CommandLine &line, Terminal terminal)
{
    const bool runs = silence == Silence::NoAnswer;
    const QString sentence = runs ? QString(kIsSilent) : kDoesNotRun;
    if (line.json) {
        print(terminal.out, asJson({{QStringLiteral("running"), runs}, {QStringLiteral("text"), sentence}}));
    } else {
        const bool asked = line.request.kind == Kind::Status && !runs;
        print(asked ? terminal.out : terminal.err, sentence + remedy(line.request.kind));
    }
    return runs ? kNoAnswer : kNotRunning;
}

int tellAnswer(const Answer &answer, const CommandLine &line, Terminal terminal)
{
    const bool failed = line.request.kind != Kind::Status && answer.status != kDone;
    if (line.json)
        print(terminal.out, asJson(answer.facts));
    else
        print(failed ? terminal.err : terminal.out, answer.text);
    return *answer.status;
}

int askCorvane(const CommandLine &line, Terminal terminal)
{
    Patience patience;
    if (line.request.kind == Kind::RestoreDns) patience.working = kUsersPatience;
    const auto begun = [&](const QString &text) {
        if (!text.isEmpty()) print(terminal.err, text);
    };
    const auto answer = ask(line.request, patience, begun);
    return answer ? tellAnswer(*answer, line, terminal) : tellSilence(answer.error(), line, terminal);
}

} // namespace

int runErrand(const CommandLine &line, const QString &version, Terminal terminal)
{
    switch (line.wish) {
    case Wish::Help:
        print(terminal.out, CommandLine::help());
        return kDone;
    case Wish::Version:
        print(terminal.out, QStringLiteral("Corvane ") + version);
        return kDone;
    case Wish::Ask:
        return askCorvane(line, terminal);
    default:
        print(terminal.err, line.mistake + QStringLiteral(" \"Corvane --help\" tells what it does."));
        return kWrongUse;
    }
}

std::optional<QString> bringForward()
{
    const Patience patience{.hearing = 10'000}; // it may have just been started, too
    const auto answer = ask({Kind::Show}, patience, [](const QString &) {});
    if (answer) return std::nullopt;
    return QString(kIsSilent);
}

} // namespace corvane::remote
