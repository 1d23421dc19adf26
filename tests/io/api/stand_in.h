#pragma once

#include <QJsonObject>
#include <QLocalSocket>
#include <QProcess>
#include <QString>
#include <QTemporaryDir>

namespace corvane::test {

/// A stand-in Pi-hole in a process of its own, on free loopback ports.
class StandIn {
public:
    /// A null password leaves it without one. `knobs` are settings of the play itself.
    explicit StandIn(const QString &password = QStringLiteral("secret"), const QJsonObject &knobs = {});
    ~StandIn();

    [[nodiscard]] int webPort() const { return m_webPort; }
    /// Ends the process: politely, or as a crash would.
    void end(bool crash = false);
    /// Starts it again with the settings it had.
    void start();
    /// Directs the play and waits until it has been done.
    void direct(const QJsonObject &request);
    /// Asks it for the address of a name.
    [[nodiscard]] QString lookUp(const QString &name) const;

private:
    QTemporaryDir m_folder;
    QString m_password;
    QJsonObject m_knobs;
    int m_webPort;
    int m_dnsPort;
    QProcess m_process;
    QLocalSocket m_channel;
};

} // namespace corvane::test
