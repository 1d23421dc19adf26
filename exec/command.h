#pragma once

#include <QMap>
#include <QString>
#include <QStringList>

#include <chrono>
#include <utility>

namespace corvane {

/// Environment variables by name.
using Environment = QMap<QString, QString>;

/// What becomes of a program's standard output and standard error.
enum class Streams {
    Apart,    ///< Each is read by itself; the order between them is lost.
    Together, ///< Both are read as standard output, in the order in which they were written.
};

class TimedCommand;

/// A program and what it is given. No shell and no search is involved; standard input is the null device.
///
/// A command is a value: `with` and `within` return a copy that says more.
class Command {
public:
    /// `exe` is an absolute path; `args` are passed one by one.
    Command(QString exe, QStringList args)
        : m_exe(std::move(exe))
        , m_args(std::move(args))
    {}

    /// Variables laid over the tool environment.
    [[nodiscard]] Command with(Environment env) const
    {
        Command changed = *this;
        changed.m_env = std::move(env);
        return changed;
    }
    /// Without this the streams are read apart.
    [[nodiscard]] Command with(Streams streams) const
    {
        Command changed = *this;
        changed.m_streams = streams;
        return changed;
    }
    [[nodiscard]] TimedCommand within(std::chrono::milliseconds limit) const;

    [[nodiscard]] const QString &exe() const { return m_exe; }
    [[nodiscard]] const QStringList &args() const { return m_args; }
    [[nodiscard]] const Environment &env() const { return m_env; }
    [[nodiscard]] Streams streams() const { return m_streams; }

private:
    QString m_exe;
    QStringList m_args;
    Environment m_env;
    Streams m_streams = Streams::Apart;
};

/// A command and the time that it is given to end.
class TimedCommand {
public:
    TimedCommand(Command command, std::chrono::milliseconds limit)
        : m_command(std::move(command))
        , m_limit(limit)
    {}

    [[nodiscard]] const Command &command() const { return m_command; }
    [[nodiscard]] std::chrono::milliseconds limit() const { return m_limit; }

private:
    Command m_command;
    std::chrono::milliseconds m_limit;
};

inline TimedCommand Command::within(std::chrono::milliseconds limit) const { return {*this, limit}; }

} // namespace corvane
