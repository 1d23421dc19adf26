#include "ui/decisions/spoken.h"

namespace corvane {

QString spokenEnd(const QString &title, bool succeeded, const QString &failure)
{
    return QStringLiteral("%1: %2").arg(title, succeeded ? QStringLiteral("Finished.") : failure);
}

QString spokenOutcome(const Row &outcome)
{
    return QStringLiteral("%1: %2. %3").arg(outcome.title, outcome.badge.spoken, outcome.detail);
}

QString spokenChecks(const QList<CheckRow> &checks)
{
    if (checks.isEmpty()) return {};
    QStringList notable;
    for (const CheckRow &check : checks) {
        if (check.state == CheckState::Failed || check.state == CheckState::Warning)
            notable << QStringLiteral("%1: %2. %3").arg(check.title, checkBadge(check.state).spoken, check.detail);
    }
    return notable.isEmpty() ? QStringLiteral("All checks passed.") : notable.join(u' ');
}

} // namespace corvane
