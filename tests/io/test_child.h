#pragma once

#include "exec/command_runner.h"

#include <QString>
#include <QStringList>

#include <functional>

namespace corvane::test {

/// The program whose behaviours tests/io/child.cpp defines.
[[nodiscard]] QString childPath();

/// Runs the test child to its end on a thread of its own, as CommandRunner's callers do.
[[nodiscard]] CommandResult runChild(const QStringList &args, std::chrono::milliseconds limit = std::chrono::minutes(1),
                                     const Environment &env = {});
[[nodiscard]] CommandResult runProgram(const QString &exe, const QStringList &args,
                                       std::chrono::milliseconds limit = std::chrono::minutes(1),
                                       const Environment &env = {});

/// Keeps the event loop going until the condition holds; false when it never did within the seconds.
[[nodiscard]] bool spinUntil(const std::function<bool()> &condition, double seconds = 60);

/// Text in the shape in which the test child takes bytes.
[[nodiscard]] QString hex(QByteArrayView bytes);

} // namespace corvane::test
