#include "exec/replace_file.h"

#include <QSaveFile>

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

} // namespace

std::expected<void, QString> replaceFile(const QString &path, QByteArrayView content)
{
    QSaveFile file(path);
    // Unbuffered: QSaveFile commits a file that is cut short when the disk turns out to be full as it empties its
    // buffer.
    const bool opened = file.open(QIODevice::WriteOnly | QIODevice::Unbuffered);
    if (!opened || !writeAll(file, content) || !file.commit()) return std::unexpected(file.errorString());
    return {};
}

} // namespace corvane
