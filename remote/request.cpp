#include "remote/request.h"

#include <QByteArrayList>

#include <algorithm>
#include <array>
#include <utility>

namespace corvane::remote {

namespace {

using Kind = Request::Kind;

constexpr std::array<std::pair<Kind, const char *>, 5> kWords{{{Kind::Show, "show"},
                                                               {Kind::Status, "status"},
                                                               {Kind::Pause, "pause"},
                                                               {Kind::Resume, "resume"},
                                                               {Kind::RestoreDns, "restore-dns"}}};

int secondsOf(char unit)
{
    if (unit == 'h') return 3600;
    if (unit == 'm') return 60;
    return unit == 's' ? 1 : 0;
}

bool isDigit(char c) { return c >= '0' && c <= '9'; }

} // namespace

QByteArray encode(const Request &request)
{
    QByteArray line = std::ranges::find(kWords, request.kind, &std::pair<Kind, const char *>::first)->second;
    if (request.kind == Kind::Pause) line += ' ' + QByteArray::number(qint64(request.length.count())) + 's';
    return line + '\n';
}

std::optional<Request> decodeRequest(const QByteArray &line)
{
    const QByteArrayList words = line.split(' ');
    const auto known = std::ranges::find_if(kWords, [&](const auto &word) { return words.first() == word.second; });
    if (known == kWords.end()) return std::nullopt;
    if (known->first != Kind::Pause) return words.size() == 1 ? std::optional(Request{known->first}) : std::nullopt;
    const auto length = words.size() == 2 ? readLength(words[1]) : std::nullopt;
    return length ? std::optional(Request{Kind::Pause, *length}) : std::nullopt;
}

std::optional<std::chrono::seconds> readLength(const QByteArray &text)
{
    constexpr qsizetype kMostDigits = 5;
    const QByteArray digits = text.chopped(std::min<qsizetype>(1, text.size()));
    if (digits.isEmpty() || digits.size() > kMostDigits || !std::ranges::all_of(digits, isDigit)) return std::nullopt;
    const std::chrono::seconds length(qint64(digits.toInt()) * secondsOf(text.back()));
    if (length.count() == 0 || length > kLongestPause) return std::nullopt;
    return length;
}

} // namespace corvane::remote
