#include "app/file_work.h"

#include "dns/dns_configurator.h"
#include "dns/restore_script.h"
#include "exec/background.h"
#include "exec/replace_file.h"
#include "runtime/pihole_controller.h"

#include <QFile>
#include <QFileInfo>

namespace corvane {

namespace {

using Written = std::expected<void, QString>;
using Read = std::expected<FileContent, QString>;

constexpr qint64 kLargestFile = qint64(256) << 20;

Read readNow(const QString &path)
{
    const QFileInfo info(path);
    if (info.exists() && !info.isFile()) return std::unexpected(QStringLiteral("It is not a file."));
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return std::unexpected(file.errorString());
    if (file.size() > kLargestFile) return std::unexpected(QStringLiteral("The file is too large."));
    FileContent content{file.read(file.size())};
    if (file.error() != QFileDevice::NoError) return std::unexpected(file.errorString());
    return content;
}

QCoro::Task<Written> onWorker(std::function<Written()> write)
{
    BackgroundWork<Written> work(std::move(write));
    const Written written = co_await work;
    co_return written;
}

} // namespace

QCoro::Task<Written> writeFile(QString path, QByteArray bytes)
{
    return onWorker([path, bytes] { return replaceFile(path, bytes); });
}

QCoro::Task<Written> writePiholeFiles(QString tag, int webPort, QString password)
{
    return onWorker([tag, webPort, password] {
        return password.isEmpty() ? PiholeController::writeComposeFile(tag, webPort)
                                  : PiholeController::writeFiles(tag, webPort, password);
    });
}

QCoro::Task<Written> saveDnsBackup(QList<NetworkService> services)
{
    const QList<NetworkService> known = co_await DNSConfigurator::readAfresh(services);
    const std::function<Written()> write = [known] { return DNSConfigurator::saveBackup(known); };
    co_return co_await onWorker(write);
}

QCoro::Task<QString> keepRestoreScript()
{
    BackgroundWork<QString> work(RestoreScript::keep);
    const QString path = co_await work;
    co_return path;
}

QCoro::Task<Read> readFile(QString path)
{
    const std::function<Read()> read = [path] { return readNow(path); };
    BackgroundWork<Read> work(read);
    const Read content = co_await work;
    co_return content;
}

} // namespace corvane
