#include "dns/restore_script.h"

#include "dns/admin_script.h"
#include "exec/app_paths.h"
#include "exec/plain_text.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace corvane {

namespace {

// In the order in which they are in the file.

constexpr QLatin1StringView kHead{R"(#!/bin/sh
# Puts the DNS servers back that this Mac had before Corvane pointed it at Pi-hole.
#
# Open it in Finder, or run it in Terminal. macOS asks for an administrator's password once.
# Corvane writes this file beside dns-backup.json each time before it changes DNS. Nothing of Corvane, Pi-hole, Docker or
# Colima is needed here: every program below is a part of macOS.

say() { printf '%s\n' "$@"; }

say 'These DNS servers are put back:'
)"};

constexpr QLatin1StringView kAsk{R"(
say '' 'macOS asks for an administrator'\''s password now. Cancel changes nothing.'
)"};

constexpr QLatin1StringView kLook{R"(
status=$?

say '' 'What macOS has now:'
)"};

constexpr QLatin1StringView kEnd{R"(
if [ $status -eq 0 ]; then
    say '' 'Done: your old DNS servers are back.'
else
    say '' 'Not everything was put back. Why stands above. You can run this file again at any time.'
fi
exit $status
)"};

/// A name that no shell can carry is no service's.
bool canBeNamed(const DNSBackupEntry &entry)
{
    const auto plain = [](const QString &text) { return !text.contains(QChar(u'\0')); };
    return plain(entry.service) && std::ranges::all_of(entry.servers, plain);
}

/// A line that prints, without what a terminal would act on.
QString say(const QString &text) { return QStringLiteral("say ") + AdminScript::quoted(plainLine(text)) + u'\n'; }

QString plan(const DNSBackupEntry &entry)
{
    return say(QStringLiteral("  ") + entry.service + QStringLiteral(": ") + serversText(entry.servers));
}

QString look(const DNSBackupEntry &entry)
{
    return say(QStringLiteral("  ") + entry.service + u':') + AdminScript::showCommand(entry.service) + u'\n';
}

/// Whether the script can be run and puts back what is saved.
bool isInStep(const DNSBackup::Entries &saved)
{
    QFile script(RestoreScript::file());
    const QByteArray wanted = RestoreScript::text(saved);
    return QFileInfo(script).isExecutable() && script.size() == wanted.size() && script.open(QIODevice::ReadOnly) &&
           script.readAll() == wanted;
}

} // namespace

QString RestoreScript::file() { return AppPaths::supportDir().filePath(QStringLiteral("Restore DNS.command")); }

QByteArray RestoreScript::text(const DNSBackup::Entries &entries)
{
    QStringList commands;
    QString plans;
    QString looks;
    for (const DNSBackupEntry &entry : entries) {
        if (!canBeNamed(entry)) continue;
        commands += AdminScript::setCommand(entry.service, entry.servers);
        plans += plan(entry);
        looks += look(entry);
    }
    const QString change = QStringLiteral("/usr/bin/osascript -e ") +
                           AdminScript::quoted(AdminScript::appleScript(AdminScript::eachOf(commands)));
    return QString(kHead + plans + kAsk + change + kLook + looks + kEnd).toUtf8();
}

NewContent RestoreScript::content(const DNSBackup::Entries &entries)
{
    constexpr auto runnable = QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner;
    return {file(), text(entries), runnable};
}

QString RestoreScript::keep()
{
    const std::scoped_lock locked(lock());
    const DNSBackup::Entries saved = DNSBackup::load();
    // A backup that cannot be read any more leaves the script as the last that knows the old servers.
    if (!QFileInfo::exists(DNSBackup::file())) QFile::remove(file());
    if (!saved.isEmpty() && !isInStep(saved) && !replaceFiles({content(saved)})) return {};
    return QFileInfo(file()).isFile() ? file() : QString();
}

std::mutex &RestoreScript::lock()
{
    static std::mutex mutex;
    return mutex;
}

} // namespace corvane
