#pragma once

#include "exec/command_result.h"

#include <QStringList>

namespace corvane {

/// The outcome of one question asked with dig.
struct DigResult {
    /// dig ended with status 0 and printed a status line.
    bool ok = false;
    /// The DNS response code, such as "NOERROR" or "NXDOMAIN"; empty when none was printed.
    QString status;
    /// The data of each answer record, in order.
    QStringList answers;
    /// Everything dig printed.
    QString output;

    /// A reply without error that carries an answer.
    [[nodiscard]] bool answered() const;

    /// The answer comes from the server's memory although its time is over; a fresh one may be under way.
    [[nodiscard]] bool stale() const;

    [[nodiscard]] static DigResult parse(const CommandResult &result);

    bool operator==(const DigResult &) const = default;
};

} // namespace corvane
