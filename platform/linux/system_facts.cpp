#include "platform/system_facts.h"

#include <QFile>
#include <QXmlStreamReader>

namespace corvane::platform {

namespace {

constexpr auto kVersionFile = "/System/Library/CoreServices/SystemVersion.plist";
constexpr auto kArm64File = "/System/Library/CoreServices/hw.optional.arm64";

/// The string that follows <key>name</key> in a flat property list.
QString plistString(QIODevice &file, QLatin1String name)
{
    QXmlStreamReader xml(&file);
    bool found = false;
    while (xml.readNextStartElement() || !xml.atEnd()) {
        if (xml.name() == QLatin1String("key")) {
            found = xml.readElementText() == name;
        } else if (found && xml.name() == QLatin1String("string")) {
            return xml.readElementText();
        }
    }
    return {};
}

} // namespace

OsVersion osVersion()
{
    QFile file(QString::fromLatin1(kVersionFile));
    if (!file.open(QIODevice::ReadOnly)) return {};
    const QString text = plistString(file, QLatin1String("ProductVersion"));
    return {text.section(u'.', 0, 0).toInt(), text.section(u'.', 1, 1).toInt()};
}

std::optional<int> hasArm64()
{
    QFile file(QString::fromLatin1(kArm64File));
    if (!file.open(QIODevice::ReadOnly)) return std::nullopt;
    bool isNumber = false;
    const int value = file.read(16).trimmed().toInt(&isNumber);
    return isNumber ? std::optional(value) : std::nullopt;
}

std::optional<QString> applicationSupportDir() { return std::nullopt; }

} // namespace corvane::platform
