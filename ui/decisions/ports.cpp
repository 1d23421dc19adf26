#include "ui/decisions/ports.h"

#include "facts/web_ports.h"

#include <algorithm>

namespace corvane {

namespace {

bool isTaken(const PortReport &report) { return report.probe == PortProbe::InUse; }

bool isWebPort(const PortReport &report) { return report.id == QLatin1String("web"); }

} // namespace

QList<Row> takenPorts(const QList<PortReport> &reports)
{
    QList<Row> rows;
    for (const PortReport &report : reports) {
        const Badge badge = checkBadge(isTaken(report) ? CheckState::Failed : CheckState::Warning);
        const QString title =
            report.label + (isTaken(report) ? QStringLiteral(" is in use by:") : QStringLiteral(" may be in use by:"));
        if (isTaken(report) || !report.holder.isEmpty()) rows.append({report.id, badge, title, report.holder});
    }
    return rows;
}

bool webPortTaken(const QList<PortReport> &reports)
{
    return std::ranges::any_of(reports, [](const PortReport &report) { return isTaken(report) && isWebPort(report); });
}

bool dnsPortTaken(const QList<PortReport> &reports)
{
    return std::ranges::any_of(reports, [](const PortReport &report) { return isTaken(report) && !isWebPort(report); });
}

QStringList webPortChoices()
{
    QStringList choices;
    for (int port = WebPorts::kDefault; port <= WebPorts::kLast; ++port)
        choices << QString::number(port);
    return choices;
}

QString noWebPortFree()
{
    return QStringLiteral("Ports %1 to %2 are all taken too.").arg(WebPorts::kFirstOther).arg(WebPorts::kLast);
}

} // namespace corvane
