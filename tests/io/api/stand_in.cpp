#include "tests/io/api/stand_in.h"

#include <QElapsedTimer>
#include <QJsonDocument>
#include <QTcpServer>
#include <QThread>
#include <gtest/gtest.h>

namespace corvane::test {

namespace {

int freePort()
{
    QTcpServer server;
    server.listen(QHostAddress::LocalHost);
    return server.serverPort();
}

} // namespace

StandIn::StandIn(const QString &password, const QJsonObject &knobs)
    : m_password(password)
    , m_knobs(knobs)
    , m_webPort(freePort())
    , m_dnsPort(freePort())
{
    const QLatin1String own("own_questions");
    if (!m_knobs.contains(own)) m_knobs.insert(own, -1); // only what a test asks is counted
    start();
}

StandIn::~StandIn() { end(); }

void StandIn::start()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("PYTHONPATH"), QStringLiteral(CORVANE_SIMMAC_FOLDER));
    environment.insert(QStringLiteral("PYTHONDONTWRITEBYTECODE"), QStringLiteral("1"));
    if (!m_password.isNull()) environment.insert(QStringLiteral("FTLCONF_webserver_api_password"), m_password);
    const QString control = m_folder.filePath(QStringLiteral("control"));
    const QString loopback = QStringLiteral("127.0.0.1:%1");
    m_process.setProcessEnvironment(environment);
    m_process.setProcessChannelMode(QProcess::MergedChannels);
    m_process.start(QStringLiteral("python3"),
                    {QStringLiteral("-m"), QStringLiteral("pihole"), QStringLiteral("--settled"),
                     QStringLiteral("--web"), loopback.arg(m_webPort), QStringLiteral("--dns"), loopback.arg(m_dnsPort),
                     QStringLiteral("--data"), m_folder.filePath(QStringLiteral("data")), QStringLiteral("--control"),
                     control, QStringLiteral("--knobs"),
                     QString::fromUtf8(QJsonDocument(m_knobs).toJson(QJsonDocument::Compact))});
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < 15'000 && m_process.state() != QProcess::NotRunning) {
        m_channel.connectToServer(control);
        if (m_channel.waitForConnected(1000)) return;
        QThread::msleep(10);
        m_process.waitForReadyRead(1);
    }
    ADD_FAILURE() << "the stand-in did not start: " << m_process.readAll().toStdString();
}

void StandIn::end(bool crash)
{
    m_channel.abort();
    if (m_process.state() == QProcess::NotRunning) return;
    crash ? m_process.kill() : m_process.terminate();
    EXPECT_TRUE(m_process.waitForFinished(10'000));
}

void StandIn::direct(const QJsonObject &request)
{
    m_channel.write(QJsonDocument(request).toJson(QJsonDocument::Compact) + '\n');
    while (!m_channel.canReadLine() && m_channel.waitForReadyRead(10'000)) {
    }
    const QJsonObject answer = QJsonDocument::fromJson(m_channel.readLine()).object();
    EXPECT_TRUE(answer[QStringLiteral("ok")].toBool()) << answer[QStringLiteral("error")].toString().toStdString();
}

QString StandIn::lookUp(const QString &name) const
{
    QProcess dig;
    dig.start(QStringLiteral("dig"), {QStringLiteral("@127.0.0.1"), QStringLiteral("-p"), QString::number(m_dnsPort),
                                      QStringLiteral("+short"), QStringLiteral("+tries=1"), name});
    dig.waitForFinished(10'000);
    return QString::fromUtf8(dig.readAllStandardOutput()).trimmed();
}

} // namespace corvane::test
