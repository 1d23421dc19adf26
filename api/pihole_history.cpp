#include "api/pihole_history.h"

#include "api/pihole_answers.h"

#include <QHash>
#include <QJsonArray>
#include <QJsonObject>

#include <algorithm>
#include <cmath>

namespace corvane {

namespace {

constexpr qint64 kLongestList = 1000;
constexpr qint64 kLatest = qint64{1} << 40;    // seconds since 1970
constexpr qint64 kMostAsked = qint64{1} << 40; // a thousand slots of it can still be summed up
constexpr int kLongestName = 255;

std::unexpected<PiholeAPIError> badResponse() { return std::unexpected(PiholeAPIError::badResponse()); }

/// The entries of the list that can be read; one odd entry does not make the others unreadable.
template <class T>
std::expected<QList<T>, PiholeAPIError> readList(const QJsonValue &list, std::optional<T> (*read)(const QJsonValue &))
{
    if (!list.isArray()) return badResponse();
    QList<T> found;
    const QJsonArray entries = list.toArray();
    for (const QJsonValue entry : entries) {
        if (found.size() == kLongestList) break;
        if (std::optional<T> item = read(entry)) found.append(*std::move(item));
    }
    if (found.isEmpty() && !entries.isEmpty()) return badResponse();
    return found;
}

std::optional<qint64> countIn(const QJsonValue &value)
{
    const std::optional<qint64> count = wholeNumber(value);
    return count && *count >= 0 && *count <= kMostAsked ? count : std::nullopt;
}

bool isName(const QString &text)
{
    return !text.isEmpty() && text.size() <= kLongestName &&
           std::ranges::all_of(text, [](QChar c) { return c > u' ' && c < u'\x7f'; });
}

std::optional<PiholeSlot> slotIn(const QJsonValue &entry)
{
    const std::optional<qint64> middle = wholeNumber(entry[u"timestamp"]);
    const std::optional<qint64> total = countIn(entry[u"total"]);
    const std::optional<qint64> blocked = countIn(entry[u"blocked"]);
    if (!middle || *middle < PiholeSlot::kSeconds || *middle > kLatest || !total || !blocked) return std::nullopt;
    return PiholeSlot{*middle / PiholeSlot::kSeconds * PiholeSlot::kSeconds, *total, std::min(*blocked, *total)};
}

std::optional<NameCount> nameIn(const QJsonValue &entry)
{
    const QString name = entry[u"domain"].toString();
    const std::optional<qint64> count = countIn(entry[u"count"]);
    if (!isName(name) || !count) return std::nullopt;
    return NameCount{name, *count};
}

} // namespace

std::expected<PiholeHistory, PiholeAPIError> parseHistory(const QByteArray &json)
{
    const std::optional<QJsonObject> answer = objectIn(json);
    if (!answer) return badResponse();
    auto found = readList(answer->value(u"history"), &slotIn);
    if (!found) return found;
    std::ranges::stable_sort(*found, {}, &PiholeSlot::start);
    const auto same = std::ranges::unique(*found, {}, &PiholeSlot::start);
    found->erase(same.begin(), same.end());
    return found;
}

std::expected<PiholeTopBlocked, PiholeAPIError> parseTopBlocked(const QByteArray &json)
{
    const std::optional<QJsonObject> answer = objectIn(json);
    if (!answer) return badResponse();
    const auto names = readList(answer->value(u"domains"), &nameIn);
    if (!names) return std::unexpected(names.error());
    const std::optional<qint64> total = wholeNumber(answer->value(u"total_queries"));
    return PiholeTopBlocked{*names, names->isEmpty() && total && *total < 0};
}

PiholeTopBlocked askedFor(const PiholeTopBlocked &counted, const QList<PiholeQuery> &newest)
{
    QHash<QString, int> asked;
    QHash<QString, int> ledTo;
    for (const PiholeQuery &question : newest) {
        ++asked[question.domain];
        if (!question.cname.isEmpty()) ++ledTo[question.cname];
    }
    PiholeTopBlocked shown{{}, counted.hidden};
    for (const NameCount &each : counted.names) {
        const double own = asked.value(each.name);
        const double led = ledTo.value(each.name);
        // A name that the newest questions do not show at all is taken for asked.
        const double share = led > 0 ? own / (own + led) : 1;
        const qint64 count = std::llround(static_cast<double>(each.count) * share);
        if (count > 0) shown.names.append({each.name, count});
    }
    std::ranges::stable_sort(shown.names, std::ranges::greater{}, &NameCount::count);
    return shown;
}

} // namespace corvane
