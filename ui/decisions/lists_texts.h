#pragma once

#include "api/pihole_types.h"

#include <QDateTime>
#include <QString>

#include <optional>

namespace corvane {

/// How many names Pi-hole blocks, and when its lists were last refreshed.
[[nodiscard]] QString listsText(const std::optional<PiholeSummary> &summary, const QDateTime &now);
/// What speaks for a refresh; empty when nothing does.
[[nodiscard]] QString listsHint(const std::optional<PiholeSummary> &summary, const QDateTime &now);

} // namespace corvane
