#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

namespace corvane::test {

/// A tool at a path of a Mac that prints what a test gave it and remembers how it was called.
class FakeTool {
public:
    /// Installs a script with this body; the arguments are recorded before it runs.
    FakeTool(const QString &path, const QByteArray &body);
    ~FakeTool();
    FakeTool(const FakeTool &) = delete;
    FakeTool &operator=(const FakeTool &) = delete;

    /// The arguments of every call, in order.
    [[nodiscard]] QList<QStringList> calls() const;

private:
    QString m_path;
};

/// A shell command that prints the text and ends with the status.
[[nodiscard]] QByteArray printing(const QByteArray &text, int status = 0);

/// A file of recorded tool output.
[[nodiscard]] QString recorded(const char *name);

} // namespace corvane::test
