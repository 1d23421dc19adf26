#pragma once

#include "app/blocked_name.h"
#include "app/permission.h"
#include "ui/decisions/rows.h"

namespace corvane {

/// No more names are shown at once; who looks for one of them finds it among the newest.
inline constexpr qsizetype kMostNames = 20;

/// One row for each name that was blocked since the user looks, or before; the id is the name. A row is enabled when a
/// permission would help and there is none yet.
[[nodiscard]] QList<Row> blockedRows(const QList<BlockedName> &names, bool isNew, const QList<Permission> &permissions);
/// How many names are left out of the rows; empty when none is.
[[nodiscard]] QString moreNames(const QList<BlockedName> &names, bool isNew);
/// One row for each permission; the id is the name.
[[nodiscard]] QList<Row> permissionRows(const QList<Permission> &permissions);

/// What is shown where no name is; empty when there are new ones.
[[nodiscard]] QString noNamesText(const QList<BlockedName> &names, int privacyLevel, const QString &trouble);

} // namespace corvane
