#pragma once

#include <QString>
#include <QStringList>

namespace corvane {

/// Builds the one shell script that runs with administrator rights, and the AppleScript that asks for them.
class AdminScript {
public:
    /// The text as one word of a POSIX shell, whatever characters it holds.
    [[nodiscard]] static QString quoted(const QString &text);

    /// Gives a network service its DNS servers; none puts it back to automatic.
    [[nodiscard]] static QString setCommand(const QString &service, const QStringList &servers);

    /// Shows the DNS servers that a network service was given.
    [[nodiscard]] static QString showCommand(const QString &service);

    /// The commands one after another up to the first that fails, then a flush of the DNS cache, which cannot fail.
    [[nodiscard]] static QString joined(QStringList commands);

    /// The commands one after another, whatever becomes of each, then the same flush; fails when one of them did.
    [[nodiscard]] static QString eachOf(const QStringList &commands);

    /// What osascript is told, so that macOS asks for an administrator's password and runs the script as root.
    [[nodiscard]] static QString appleScript(QString script);
};

} // namespace corvane
