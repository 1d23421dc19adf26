#include "dns/admin_script.h"

namespace corvane {

namespace {

constexpr QLatin1StringView kFlush{"(/usr/bin/dscacheutil -flushcache; /usr/bin/killall -HUP mDNSResponder; true)"};

} // namespace

QString AdminScript::quoted(const QString &text)
{
    QString inside = text;
    inside.replace(u'\'', QStringLiteral("'\\''"));
    return u'\'' + inside + u'\'';
}

QString AdminScript::setCommand(const QString &service, const QStringList &servers)
{
    QStringList words{QStringLiteral("/usr/sbin/networksetup"), QStringLiteral("-setdnsservers"), quoted(service)};
    for (const QString &server : servers)
        words += quoted(server);
    if (servers.isEmpty()) words += QStringLiteral("Empty");
    return words.join(u' ');
}

QString AdminScript::showCommand(const QString &service)
{
    return QStringLiteral("/usr/sbin/networksetup -getdnsservers ") + quoted(service);
}

QString AdminScript::joined(QStringList commands)
{
    commands += kFlush;
    return commands.join(QStringLiteral(" && "));
}

QString AdminScript::eachOf(const QStringList &commands)
{
    QString script = QStringLiteral("failed=0; ");
    for (const QString &command : commands)
        script += command + QStringLiteral(" || failed=1; ");
    return script + kFlush + QStringLiteral("; exit $failed");
}

QString AdminScript::appleScript(QString script)
{
    // Backslashes first: those that escape the quotes must not be escaped themselves.
    script.replace(u'\\', QStringLiteral("\\\\"));
    script.replace(u'"', QStringLiteral("\\\""));
    return QStringLiteral("do shell script \"") + script + QStringLiteral("\" with administrator privileges");
}

} // namespace corvane
