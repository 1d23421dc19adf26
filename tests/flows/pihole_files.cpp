#include "tests/flows/pihole_files.h"

#include "tests/flows/mac.h"
#include "tests/flows/saved_files.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>

namespace corvane::test {

namespace {

/// What the pattern captures in the compose file, when that ends as a whole one does.
QString inCompose(const QString &pattern)
{
    const QString text = QString::fromUtf8(contentOf(PiholeFiles::compose()));
    if (!text.endsWith(QStringLiteral("name: pihole_dnsmasq\n"))) return {};
    return QRegularExpression(pattern).match(text).captured(1);
}

QJsonObject containers()
{
    return Mac::ctl(QStringLiteral("status")).toObject().value(QLatin1String("containers")).toObject();
}

} // namespace

QString PiholeFiles::folder() { return QDir::home().filePath(QStringLiteral("Library/Application Support/Corvane")); }

QString PiholeFiles::compose() { return folder() + QStringLiteral("/docker-compose.yml"); }

QString PiholeFiles::environment() { return folder() + QStringLiteral("/pihole.env"); }

QString PiholeFiles::composeTag() { return inCompose(QStringLiteral("image: pihole/pihole:(\\S+)\n")); }

int PiholeFiles::composePort() { return inCompose(QStringLiteral("127\\.0\\.0\\.1:(\\d+):80/tcp")).toInt(); }

bool PiholeFiles::environmentIsWhole(const QString &password)
{
    const auto owner = QFile::ReadOwner | QFile::WriteOwner;
    const auto rights = QFileInfo(environment()).permissions() & ~(QFile::ReadUser | QFile::WriteUser);
    return rights == owner && contentOf(environment()) == "FTLCONF_webserver_api_password=" + password.toUtf8() + '\n';
}

QStringList PiholeFiles::backups()
{
    QStringList paths;
    const auto entries =
        QDir(folder() + QStringLiteral("/backups")).entryInfoList({QStringLiteral("*.zip")}, QDir::Files, QDir::Name);
    for (const QFileInfo &entry : entries)
        paths.append(entry.filePath());
    return paths;
}

QString PiholeFiles::containerImage()
{
    const QJsonArray all = containers().value(QLatin1String("containers")).toArray();
    for (const QJsonValue &each : all) {
        const QJsonObject container = each.toObject();
        if (container.value(QLatin1String("name")).toString() == QLatin1String("pihole"))
            return container.value(QLatin1String("image")).toString();
    }
    return {};
}

QStringList PiholeFiles::volumes()
{
    QStringList names;
    const QJsonArray all = containers().value(QLatin1String("volumes")).toArray();
    for (const QJsonValue &name : all)
        names.append(name.toString());
    return names;
}

QStringList PiholeFiles::bothVolumes() { return {QStringLiteral("pihole_dnsmasq"), QStringLiteral("pihole_etc")}; }

} // namespace corvane::test
