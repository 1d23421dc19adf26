#pragma once

#include <QString>

#include <optional>

namespace corvane {

/// How one run of an outside program ended and what it printed.
///
/// | outcome                          | status             | timedOut | launchError | output          |
/// |----------------------------------|--------------------|----------|-------------|-----------------|
/// | ended by itself                  | its exit status    | false    | absent      | all of it       |
/// | ended by a signal                | the signal's number| false    | absent      | what it printed |
/// | told to end at the time limit    | as the two above   | true     | absent      | what it printed |
/// | still running after the grace    | -1                 | true     | absent      | what it printed |
/// | could not be started             | -1                 | false    | the reason  | none            |
struct CommandResult {
    /// The exit status, or the number of the signal that ended the child. -1 when the child never started or was still
    /// running when the result was taken.
    qint32 status = -1;
    QString standardOutput;
    QString standardError;
    /// The time limit passed and the child was told to end.
    bool timedOut = false;
    /// Why the child could not be started, in the system's words; absent when it started.
    std::optional<QString> launchError;

    /// Started, ended in time, and ended with status 0.
    [[nodiscard]] bool succeeded() const { return status == 0 && !timedOut && !launchError; }

    /// Both streams trimmed, empty ones dropped, joined by a line feed.
    [[nodiscard]] QString combined() const;
};

} // namespace corvane
