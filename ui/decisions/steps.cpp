#include "ui/decisions/steps.h"

#include "app/app_model.h"
#include "app/wizard_steps.h"

namespace corvane {

Badge stepBadge(bool done, bool current)
{
    if (done) return {QStringLiteral("checkmark.circle.fill"), Tint::Green, QStringLiteral("done")};
    const QString symbol = current ? QStringLiteral("circle.inset.filled") : QStringLiteral("circle");
    return {symbol, Tint::Secondary, QStringLiteral("not done yet")};
}

Row stepRow(int step, const QString &title, bool done, bool current)
{
    Row row;
    row.id = QString::number(step);
    row.badge = stepBadge(done, current);
    row.title = QStringLiteral("%1. %2").arg(step + 1).arg(title);
    row.detail = QStringLiteral("%1, %2, step %3 of %4")
                     .arg(title, row.badge.spoken, QString::number(step + 1), QString::number(kStepCount));
    return row;
}

QString stepPosition(int step) { return QStringLiteral("Step %1 of %2").arg(step + 1).arg(kStepCount); }

QString stepView(int step)
{
    const auto &row = kWizardSteps.at(static_cast<std::size_t>(std::clamp(step, 0, kLastStep)));
    return QString::fromLatin1(row.view) + QStringLiteral("StepView.qml");
}

bool hasStepBefore(int step) { return step > 0; }

bool hasStepAfter(int step) { return step < kLastStep; }

} // namespace corvane
