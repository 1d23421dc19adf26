#include "tests/support/fake_tool.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace corvane::test {

namespace {

constexpr char kEndOfCall = '\x1e';

QString callsFile(const QString &path) { return path + QStringLiteral(".calls"); }

} // namespace

FakeTool::FakeTool(const QString &path, const QByteArray &body)
    : m_path(path)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile::remove(path); // it may be a link to the host's own
    QFile::remove(callsFile(path));
    QFile script(path);
    if (!script.open(QIODevice::WriteOnly)) qFatal("The tool %s cannot be written", qPrintable(path));
    script.write("#!/bin/sh\n"
                 "{ [ $# -eq 0 ] || printf '%s\\0' \"$@\"; printf '\\036'; } >> '" +
                 QFile::encodeName(callsFile(path)) + "'\n" + body + '\n');
    script.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
}

FakeTool::~FakeTool()
{
    QFile::remove(m_path);
    QFile::remove(callsFile(m_path));
}

QList<QStringList> FakeTool::calls() const
{
    QFile file(callsFile(m_path));
    if (!file.open(QIODevice::ReadOnly)) return {};
    QList<QByteArray> records = file.readAll().split(kEndOfCall);
    records.removeLast();

    QList<QStringList> calls;
    for (const QByteArray &record : records) {
        QStringList call;
        for (const QByteArray &argument : record.split('\0'))
            call += QString::fromUtf8(argument);
        call.removeLast();
        calls += call;
    }
    return calls;
}

QByteArray printing(const QByteArray &text, int status)
{
    return "cat <<'END_OF_TEXT'\n" + text + "\nEND_OF_TEXT\nexit " + QByteArray::number(status);
}

QString recorded(const char *name)
{
    QFile file(QStringLiteral(CORVANE_TEST_DATA "/tools/") + QString::fromLatin1(name));
    if (!file.open(QIODevice::ReadOnly)) qFatal("There is no recording %s", name);
    return QString::fromUtf8(file.readAll());
}

} // namespace corvane::test
