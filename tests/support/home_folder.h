#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>
#include <QTemporaryDir>

namespace corvane::test {

/// A home folder of its own for as long as a test runs.
class HomeFolder {
public:
    HomeFolder()
        : m_before(qgetenv("HOME"))
    {
        // A test that gives root's rights up must still reach it.
        QFile::setPermissions(m_folder.path(), QFile::permissions(m_folder.path()) | QFileDevice::ExeGroup |
                                                   QFileDevice::ExeOther | QFileDevice::ReadOther);
        qputenv("HOME", m_folder.path().toUtf8());
    }
    ~HomeFolder() { qputenv("HOME", m_before); }
    HomeFolder(const HomeFolder &) = delete;
    HomeFolder &operator=(const HomeFolder &) = delete;

    [[nodiscard]] QString path(const QString &below) const { return m_folder.filePath(below); }

private:
    QByteArray m_before;
    QTemporaryDir m_folder;
};

} // namespace corvane::test
