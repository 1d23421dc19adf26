#include "exec/replace_file.h"

#include <QFile>
#include <QSaveFile>

#include <memory>
#include <vector>

namespace corvane {

namespace {

/// Goes on after a short write, because only the next one says why it was short.
bool writeAll(QIODevice &device, QByteArrayView rest)
{
    while (!rest.isEmpty()) {
        const qint64 written = device.write(rest.data(), rest.size());
        if (written <= 0) return false;
        rest = rest.sliced(written);
    }
    return true;
}

/// Opens the file beside its final place and fills it.
bool fill(QSaveFile &file, QByteArrayView content)
{
    // Unbuffered: QSaveFile commits a file that is cut short when the disk turns out to be full as it empties its
    // buffer.
    return file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) && writeAll(file, content);
}

/// One file of several that are replaced together: what it is to hold is ready, and what it held is kept in mind.
class Replacement {
public:
    explicit Replacement(const NewContent &wanted)
        : m_file(wanted.path)
        , m_ready(fill(m_file, wanted.content))
    {
        if (m_ready && wanted.permissions) m_ready = m_file.setPermissions(*wanted.permissions);
        QFile before(wanted.path);
        if (!before.open(QIODevice::ReadOnly)) return;
        m_before = before.readAll();
        m_permissions = before.permissions();
    }

    [[nodiscard]] bool ready() const { return m_ready; }
    [[nodiscard]] bool commit() { return m_file.commit(); }
    [[nodiscard]] QString reason() const { return m_file.errorString(); }

    void undo() const
    {
        if (!m_before) {
            QFile::remove(m_file.fileName());
            return;
        }
        QSaveFile back(m_file.fileName());
        if (fill(back, *m_before) && back.setPermissions(m_permissions)) back.commit();
    }

private:
    QSaveFile m_file;
    bool m_ready;
    std::optional<QByteArray> m_before;
    QFileDevice::Permissions m_permissions;
};

} // namespace

std::expected<void, QString> replaceFile(const QString &path, QByteArrayView content)
{
    QSaveFile file(path);
    if (!fill(file, content) || !file.commit()) return std::unexpected(file.errorString());
    return {};
}

std::expected<void, QString> replaceFiles(const QList<NewContent> &files)
{
    std::vector<std::unique_ptr<Replacement>> replacements;
    for (const NewContent &file : files) {
        replacements.push_back(std::make_unique<Replacement>(file));
        if (!replacements.back()->ready()) return std::unexpected(replacements.back()->reason());
    }
    for (std::size_t i = 0; i < replacements.size(); ++i) {
        if (replacements[i]->commit()) continue;
        const QString reason = replacements[i]->reason();
        while (i > 0)
            replacements[--i]->undo();
        return std::unexpected(reason);
    }
    return {};
}

std::expected<void, QString> replacePrivateFile(const QString &path, QByteArrayView content)
{
    return replaceFiles({{path, content.toByteArray(), QFileDevice::ReadOwner | QFileDevice::WriteOwner}});
}

} // namespace corvane
