#include "app/file_work.h"

#include "exec/background.h"

#include <QFileInfo>
#include <QSaveFile>

namespace corvane {

namespace {

using Written = std::expected<void, QString>;
using Read = std::expected<FileContent, QString>;

constexpr qint64 kLargestFile = qint64(256) << 20;

Written writeNow(const QString &path, const QByteArray &bytes)
{
    QSaveFile file(path);
    file.setDirectWriteFallback(true);
    if (file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit()) return {};
    return std::unexpected(file.errorString());
}

Read readNow(const QString &path)
{
    const QFileInfo info(path);
    if (info.exists() && !info.isFile()) return std::unexpected(QStringLiteral("It is not a file."));
    if (info.size() > kLargestFile) return std::unexpected(QStringLiteral("The file is too large."));
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return std::unexpected(file.errorString());
    FileContent content{file.read(kLargestFile)};
    if (file.error() != QFileDevice::NoError) return std::unexpected(file.errorString());
    return content;
}

} // namespace

QCoro::Task<Written> writeFile(QString path, QByteArray bytes)
{
    const std::function<Written()> write = [path, bytes] { return writeNow(path, bytes); };
    BackgroundWork<Written> work(write);
    const Written written = co_await work;
    co_return written;
}

QCoro::Task<Read> readFile(QString path)
{
    const std::function<Read()> read = [path] { return readNow(path); };
    BackgroundWork<Read> work(read);
    const Read content = co_await work;
    co_return content;
}

} // namespace corvane
