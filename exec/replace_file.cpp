#include "exec/replace_file.h"

#include <QFile>
#include <QSaveFile>

#include <memory>
#include <vector>

namespace corvane {

namespace {

/// Goes on after a short write, because only the next one tells why it was short.
bool writeAll(QIODevice &device, QByteArrayView rest)
{
    while (!rest.isEmpty()) {
        const qint64 written = device.write(rest.data(), rest.size());
        if (written <= 0) return false;
        rest = rest.sliced(written);
    }
    return true;
}

/// `opened`: the file could be opened, and made what it is to be.
std::expected<void, QString> fill(QSaveFile &file, bool opened, QByteArrayView content)
{
    if (!opened || !writeAll(file, content) || !file.commit()) return std::unexpected(file.errorString());
    return {};
}

/// Unbuffered: QSaveFile commits a file that is cut short when the disk turns out to be full as it empties its buffer.
constexpr auto kHow = QIODevice::WriteOnly | QIODevice::Unbuffered;

} // namespace

std::expected<void, QString> replaceFile(const QString &path, QByteArrayView content)
{
    QSaveFile file(path);
    return fill(file, file.open(kHow), content);
}

std::expected<void, QString> replacePrivateFile(const QString &path, QByteArrayView content)
{
    QSaveFile file(path);
    const bool opened = file.open(kHow) && file.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    return fill(file, opened, content);
}

} // namespace corvane
