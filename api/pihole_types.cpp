#include "api/pihole_types.h"

#include <QJsonDocument>
#include <QJsonObject>

namespace corvane {

namespace {

QString adviceOn(int code, const QByteArray &body)
{
    const QJsonObject error = QJsonDocument::fromJson(body)[u"error"].toObject();
    const QString key = error.value(u"key").toString();
    if (code == 429 && key == u"api_seats_exceeded")
        return QStringLiteral("All of Pi-hole's places for sessions are taken. One becomes free by itself within 30 "
                              "minutes, or when somebody logs out of Pi-hole's web page.");
    if (code == 429) return QStringLiteral("Pi-hole got too many log-ins at once. Corvane tries again by itself.");
    if (code == 400 && error.value(u"message").toString().contains(u"2FA"))
        return QStringLiteral(
            "Pi-hole asks for a second factor at log-in, which Corvane cannot give. Switch two-factor "
            "log-in off on Pi-hole's web page.");
    return {};
}

} // namespace

PiholeAPIError PiholeAPIError::http(int code, const QByteArray &body)
{
    PiholeAPIError error(Kind::Http, code);
    error.m_advice = adviceOn(code, body);
    return error;
}

QString PiholeAPIError::description() const
{
    switch (m_kind) {
    case Kind::Unreachable:
        return QStringLiteral("Pi-hole did not answer on 127.0.0.1.");
    case Kind::Unauthorized:
        return QStringLiteral("Pi-hole refused the admin password.");
    case Kind::Http:
        return QStringLiteral("Pi-hole answered with HTTP %1").arg(m_code);
    case Kind::NoPassword:
        return QStringLiteral(
            "Your Keychain has not given Corvane the admin password yet. macOS may be asking for it in "
            "another window.");
    case Kind::BadResponse:
        break;
    }
    return QStringLiteral("Pi-hole sent an answer this app does not understand.");
}

} // namespace corvane
