#include "dns/dns_configurator.h"
#include "dns/text_lines.h"

#include <QRegularExpression>

namespace corvane {

namespace {

std::optional<QString> deviceIn(QStringView line)
{
    static const QRegularExpression pattern(QStringLiteral("Device: ([^,)]+)"));
    std::optional<QString> device;
    QRegularExpressionMatchIterator matches = pattern.globalMatch(line.toString());
    // The name of a hardware port may hold the same words; the device comes last.
    while (matches.hasNext())
        device = matches.next().captured(1);
    return device;
}

} // namespace

QStringList DNSConfigurator::parseServiceNames(QStringView text)
{
    QStringList names;
    for (const QStringView line : trimmedLines(text)) {
        const bool explanation = line.contains(u" (*)");
        const bool disabled = line.startsWith(u'*');
        if (!line.isEmpty() && !explanation && !disabled) names += line.toString();
    }
    return names;
}

QStringList DNSConfigurator::parsePresentServices(QStringView text)
{
    QStringList names;
    for (QStringView line : trimmedLines(text)) {
        if (line.startsWith(u'*')) line = line.sliced(1);
        if (!line.isEmpty() && !line.contains(u" (*)")) names += line.toString();
    }
    return names;
}

QHash<QString, QString> DNSConfigurator::parseServiceDevices(QStringView text)
{
    QHash<QString, QString> devices;
    std::optional<QString> service;
    for (const QStringView line : trimmedLines(text)) {
        if (line.startsWith(u"(Hardware Port:")) {
            if (!service) continue;
            if (const auto device = deviceIn(line)) devices.insert(*service, *device);
        } else if (line.startsWith(u'(') && line.contains(u')')) {
            service = trimmedBlanks(line.sliced(line.indexOf(u')') + 1)).toString();
        }
    }
    return devices;
}

std::optional<QString> DNSConfigurator::parseDefaultRoute(QStringView text)
{
    constexpr QStringView kLabel = u"interface:";
    for (const QStringView line : trimmedLines(text)) {
        if (line.startsWith(kLabel)) return trimmedBlanks(line.sliced(kLabel.size())).toString();
    }
    return std::nullopt;
}

QStringList DNSConfigurator::parseServers(QStringView text)
{
    if (text.contains(kNoServers)) return {};
    QStringList servers;
    for (const QStringView line : trimmedLines(text)) {
        // Whatever holds a space is a sentence of the tool, not an address.
        if (!line.isEmpty() && !line.contains(u' ')) servers += line.toString();
    }
    return servers;
}

} // namespace corvane
