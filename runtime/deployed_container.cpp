#include "runtime/deployed_container.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace corvane {

std::optional<DeployedContainer> DeployedContainer::parse(QStringView output)
{
    const QStringView line = output.trimmed();
    const qsizetype bar = line.indexOf(u'|');
    if (bar <= 0) return std::nullopt;
    const QStringView ports = line.mid(bar + 1);
    const QJsonDocument bindings = QJsonDocument::fromJson(ports.toUtf8());
    // A container that publishes nothing has "null" or "{}".
    if (!bindings.isObject() && ports != u"null") return std::nullopt;

    DeployedContainer found{.exists = true};
    constexpr QLatin1StringView kImage{"pihole/pihole:"};
    if (line.startsWith(kImage)) found.tag = line.mid(kImage.size(), bar - kImage.size()).toString();
    const QJsonValue admin = bindings.object().value(QLatin1String("80/tcp")).toArray().at(0);
    found.webPort = admin.toObject().value(QLatin1String("HostPort")).toString().toInt();
    return found;
}

} // namespace corvane
