#pragma once

#include <QList>
#include <QString>

namespace corvane {

/// How far one check has come.
enum class CheckState { Unknown, Running, Ok, Warning, Failed };

/// One row of a check list.
struct CheckRow {
    QString id;
    QString title;
    CheckState state = CheckState::Unknown;
    /// Shown under the title.
    QString detail;

    bool operator==(const CheckRow &) const = default;
};

using CheckRows = QList<CheckRow>;

} // namespace corvane
