#include "remote/answer.h"

#include <QJsonDocument>

namespace corvane::remote {

namespace {

constexpr QLatin1StringView kStatus("status");
constexpr QLatin1StringView kText("text");
constexpr QLatin1StringView kFacts("facts");
constexpr int kHighestStatus = 255;

} // namespace

QByteArray encode(const Answer &answer)
{
    QJsonObject object{{kText, answer.text}};
    if (answer.status) object.insert(kStatus, *answer.status);
    if (!answer.facts.isEmpty()) object.insert(kFacts, answer.facts);
    return QJsonDocument(object).toJson(QJsonDocument::Compact) + '\n';
}

std::optional<Answer> decodeAnswer(const QByteArray &line)
{
    const QJsonDocument document = QJsonDocument::fromJson(line);
    const QJsonObject object = document.object();
    if (!document.isObject() || !object[kText].isString()) return std::nullopt;

    Answer answer{std::nullopt, object[kText].toString(), object[kFacts].toObject()};
    if (!object.contains(kStatus)) return answer;
    const int status = object[kStatus].toInt(-1);
    if (status < 0 || status > kHighestStatus) return std::nullopt;
    answer.status = status;
    return answer;
}

} // namespace corvane::remote
