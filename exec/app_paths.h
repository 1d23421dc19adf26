#pragma once

#include <QDir>

namespace corvane {

/// The folders that Corvane owns. Each is created on every access; a failure to create shows when they are used.
class AppPaths {
public:
    /// "Corvane" in the user's application-support folder.
    [[nodiscard]] static QDir supportDir();
    /// "backups" in the support folder: settings archives saved before updates.
    [[nodiscard]] static QDir backupsDir();
    /// "running" in the support folder, which nobody but its user can enter: what a running Corvane is found by.
    [[nodiscard]] static QDir runningDir();
};

} // namespace corvane
