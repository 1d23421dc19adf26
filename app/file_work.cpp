#include "app/file_work.h"

#include "exec/background.h"
#include "exec/replace_file.h"

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

} // namespace

QCoro::Task<Written> writeFile(QString path, QByteArray bytes)
{
    const std::function<Written()> write = [path, bytes] { return replaceFile(path, bytes); };
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
