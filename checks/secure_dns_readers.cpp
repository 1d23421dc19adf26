#include "checks/secure_dns_readers.h"

#include <QByteArrayView>
#include <QJsonDocument>
#include <QJsonObject>

#include <string_view>

namespace corvane {

namespace {

/// Longer values are no settings of a user and would only fill the screen.
constexpr qsizetype kMaxShown = 1000;

QString shown(const QString &value) { return value.size() <= kMaxShown ? value : value.first(kMaxShown) + u'…'; }

SecureDNSReading secure(const QString &templates)
{
    const QString server = templates.isEmpty() ? QString() : QStringLiteral(" (") + shown(templates) + u')';
    return {SecureDNSState::On,
            QStringLiteral("Secure DNS is ON") + server + QStringLiteral(". This bypasses Pi-hole.")};
}

QByteArrayView lineAround(QByteArrayView text, qsizetype position)
{
    const qsizetype begin = text.first(position).lastIndexOf('\n') + 1;
    const qsizetype end = text.indexOf('\n', position);
    return text.sliced(begin, (end < 0 ? text.size() : end) - begin);
}

/// What is between the first comma and the second, without the punctuation around it.
QByteArrayView secondPart(QByteArrayView line)
{
    constexpr std::string_view kPunctuation = " );\t\r";
    const auto isPunctuation = [&](char c) { return kPunctuation.find(c) != std::string_view::npos; };

    const qsizetype comma = line.indexOf(',');
    if (comma < 0) return {};
    QByteArrayView part = line.sliced(comma + 1);
    if (const qsizetype next = part.indexOf(','); next >= 0) part = part.first(next);
    while (!part.isEmpty() && isPunctuation(part.front()))
        part = part.sliced(1);
    while (!part.isEmpty() && isPunctuation(part.back()))
        part.chop(1);
    return part;
}

SecureDNSReading readMode(QByteArrayView written)
{
    bool isNumber = false;
    const qlonglong mode = written.toByteArray().toLongLong(&isNumber);
    const QString value = shown(QString::fromUtf8(written));
    if (isNumber && (mode == 2 || mode == 3)) {
        return {SecureDNSState::On,
                QStringLiteral("Secure DNS is ON (network.trr.mode = %1). This bypasses Pi-hole.").arg(value)};
    }
    if (isNumber && mode == 5) {
        return {SecureDNSState::Off, QStringLiteral("Secure DNS is switched off (network.trr.mode = 5). Good.")};
    }
    if (isNumber && mode == 0) {
        return {SecureDNSState::UnknownDefault,
                QStringLiteral("network.trr.mode = 0 (Firefox default). Firefox may "
                               "still turn secure DNS on for some countries."),
                true};
    }
    return {SecureDNSState::UnknownDefault, QStringLiteral("network.trr.mode = %1.").arg(value)};
}

} // namespace

SecureDNSReading readLocalState(const QByteArray &bytes)
{
    const QJsonDocument document = QJsonDocument::fromJson(bytes);
    if (!document.isObject()) {
        return {SecureDNSState::NotReadable, QStringLiteral("The settings file has an unexpected format.")};
    }
    const QJsonValue settings = document[u"dns_over_https"];
    if (!settings[u"mode"].isString()) {
        return {SecureDNSState::UnknownDefault,
                QStringLiteral("Not set by you. The default only upgrades to secure DNS when the system DNS server "
                               "supports it, which Pi-hole does not."),
                true};
    }
    const QString mode = settings[u"mode"].toString();
    if (mode == u"secure") return secure(settings[u"templates"].toString());
    if (mode == u"off") return {SecureDNSState::Off, QStringLiteral("Secure DNS is off. Good.")};
    return {SecureDNSState::Off,
            QStringLiteral("Secure DNS is on 'automatic': it is used only if the system DNS server supports it, so "
                           "Pi-hole stays in charge."),
            true};
}

SecureDNSReading readPrefs(const QByteArray &bytes)
{
    if (!bytes.isValidUtf8()) {
        return {SecureDNSState::NotReadable, QStringLiteral("Could not read Firefox's prefs.js.")};
    }
    const QByteArrayView text(bytes);
    const qsizetype key = text.indexOf("\"network.trr.mode\"");
    if (key < 0) {
        return {SecureDNSState::UnknownDefault,
                QStringLiteral("Not set by you. Firefox enables secure DNS by default in some countries, so check the "
                               "setting."),
                true};
    }
    return readMode(secondPart(lineAround(text, key)));
}

} // namespace corvane
