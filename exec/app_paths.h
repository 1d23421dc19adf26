#pragma once

#include <QDir>

namespace corvane {

/// The two folders that Corvane owns. Both are created on every access; a failure to create shows when they are used.
class AppPaths {
public:
    /// "Corvane" in the user's application-support folder.
    [[nodiscard]] static QDir supportDir();
    /// "backups" in the support folder: settings archives saved before updates.
    [[nodiscard]] static QDir backupsDir();
};

} // namespace corvane
