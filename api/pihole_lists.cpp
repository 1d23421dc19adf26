#include "api/pihole_lists.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace corvane {

namespace {

PiholeList::Fetch fetchOf(int status)
{
    switch (status) {
    case 1:
        return PiholeList::Fetch::Fetched;
    case 2:
        return PiholeList::Fetch::Unchanged;
    case 3:
        return PiholeList::Fetch::OldCopy;
    case 4:
        return PiholeList::Fetch::Nothing;
    default:
        return PiholeList::Fetch::Never;
    }
}

} // namespace

std::expected<QList<PiholeList>, PiholeAPIError> parseLists(const QByteArray &json)
{
    const QJsonValue entries = QJsonDocument::fromJson(json)[u"lists"];
    if (!entries.isArray()) return std::unexpected(PiholeAPIError::badResponse());
    QList<PiholeList> lists;
    for (const QJsonValue each : entries.toArray()) {
        if (!each[u"address"].isString() || !each[u"id"].isDouble())
            return std::unexpected(PiholeAPIError::badResponse());
        lists.append({each[u"id"].toInteger(), each[u"address"].toString(), each[u"comment"].toString(),
                      each[u"enabled"].toBool(true), fetchOf(each[u"status"].toInt()), each[u"number"].toInteger(),
                      each[u"invalid_domains"].toInteger()});
    }
    return lists;
}

bool listsWereLoaded(const QByteArray &printed) { return printed.trimmed().endsWith("Done."); }

} // namespace corvane
