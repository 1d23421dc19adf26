#pragma once

#include "checks/port_report.h"
#include "ui/decisions/rows.h"

namespace corvane {

/// One row for each port that is taken; the detail names its holder.
[[nodiscard]] QList<Row> takenPorts(const QList<PortReport> &reports);
[[nodiscard]] bool webPortTaken(const QList<PortReport> &reports);
[[nodiscard]] bool dnsPortTaken(const QList<PortReport> &reports);

/// The ports that the admin page can be given.
[[nodiscard]] QStringList webPortChoices();
/// What is said when none of those in place of the default is free.
[[nodiscard]] QString noWebPortFree();

} // namespace corvane
