#include "ui/decisions/rows.h"

#include "app/wizard_steps.h"

namespace corvane {

namespace {

const Badge kDone{QStringLiteral("checkmark.circle.fill"), Tint::Green, QStringLiteral("done")};
const Badge kFailed{QStringLiteral("xmark.octagon.fill"), Tint::Red, QStringLiteral("failed")};
const Badge kOpen{QStringLiteral("circle"), Tint::Secondary, QStringLiteral("not done yet")};

Row blockedRow(const BlockingTestResult &result)
{
    const QString id = QStringLiteral("blocked");
    const QString note = result.note.value_or(QString());
    if (!result.blockedDomain) {
        const QString none = QStringLiteral("No test tracker domain was blocked yet.");
        return {id, kFailed, QStringLiteral("Nothing was blocked"), note.isEmpty() ? none : none + u'\n' + note};
    }
    const QString title =
        QStringLiteral("Blocked: %1 %2").arg(*result.blockedDomain, result.blockedKind.value_or(QString()));
    return {id, kDone, title.trimmed(), note};
}

Row allowedRow(const BlockingTestResult &result)
{
    const bool answered =
        !result.allowedAnswer.isEmpty() && !result.allowedAnswer.startsWith(QLatin1String("no answer"));
    const QString detail = result.allowedAnswer.isEmpty() ? QStringLiteral("no answer")
                           : answered                     ? QStringLiteral("Answer: ") + result.allowedAnswer
                                                          : result.allowedAnswer;
    return {QStringLiteral("allowed"), answered ? kDone : kFailed, QStringLiteral("Allowed: example.com"), detail};
}

} // namespace

Badge checkBadge(CheckState state)
{
    switch (state) {
    case CheckState::Unknown:
        return {QStringLiteral("circle"), Tint::Secondary, QStringLiteral("not checked yet")};
    case CheckState::Running:
        return {{}, Tint::Secondary, QStringLiteral("checking")};
    case CheckState::Ok:
        return {QStringLiteral("checkmark.circle.fill"), Tint::Green, QStringLiteral("passed")};
    case CheckState::Warning:
        return {QStringLiteral("exclamationmark.triangle.fill"), Tint::Orange, QStringLiteral("warning")};
    case CheckState::Failed:
        break;
    }
    return kFailed;
}

QList<Row> checkRows(const CheckRows &rows)
{
    QList<Row> shown;
    for (const CheckRow &row : rows)
        shown.append({row.id, checkBadge(row.state), row.title, row.detail});
    return shown;
}

Row toolRow(const QString &name, bool found)
{
    const Badge badge = found ? Badge{kDone.symbol, kDone.tint, QStringLiteral("found")}
                              : Badge{kOpen.symbol, kOpen.tint, QStringLiteral("not found")};
    return {name, badge, name, {}};
}

QList<Row> blockingRows(const std::optional<BlockingTestResult> &result)
{
    if (!result) return {};
    return {blockedRow(*result), allowedRow(*result)};
}

QString blockingCounts(const std::optional<BlockingTestResult> &result)
{
    if (!result || !result->queries || !result->blockedToday) return {};
    return QStringLiteral("From Pi-hole's API: Queries today: %1. Blocked today: %2")
        .arg(*result->queries)
        .arg(*result->blockedToday);
}

QList<Row> serviceRows(const QList<NetworkService> &services)
{
    QList<Row> rows;
    for (const NetworkService &service : services) {
        const QString used =
            service.isDefaultRoute ? QStringLiteral("  (used for your internet connection)") : QString();
        rows.append({service.name, {}, service.name + used, QStringLiteral("DNS: ") + serversText(service.servers)});
    }
    return rows;
}

QString serversInUse(const std::optional<ResolverReport> &report)
{
    const bool known = report && !report->defaultServers.isEmpty();
    return QStringLiteral("DNS servers macOS uses now: ") +
           (known ? report->defaultServers.join(QStringLiteral(", ")) : QStringLiteral("unknown"));
}

Badge outcomeBadge(const Outcomes &outcomes, const QString &test)
{
    if (!outcomes.contains(test)) return checkBadge(CheckState::Unknown);
    return checkBadge(passed(outcomes, test) ? CheckState::Ok : CheckState::Failed);
}

QString dockerHint(const Outcomes &outcomes, bool hasDocker)
{
    const QString test = QStringLiteral("docker");
    if (!outcomes.contains(test) || passed(outcomes, test)) return {};
    return hasDocker ? QStringLiteral("Docker does not answer. Start Colima, then test again.")
                     : QStringLiteral("docker was not found. Install Colima and Docker first.");
}

QString systemVerdict(const Outcomes &outcomes)
{
    const QString test = QStringLiteral("system");
    if (!outcomes.contains(test)) return {};
    return passed(outcomes, test) ? QStringLiteral("This Mac uses Pi-hole") : QStringLiteral("Not confirmed");
}

QString resolverWarning(const std::optional<ResolverReport> &report, const Outcomes &outcomes)
{
    const bool tested = outcomes.contains(QStringLiteral("system"));
    if (!report || !tested) return {};
    QStringList sentences = report->warnings;
    if (!report->explanation.isEmpty()) sentences += report->explanation;
    return sentences.join(u'\n');
}

QList<Row> outcomeRows(const Outcomes &outcomes)
{
    QList<Row> rows;
    for (const WizardStepRow &step : kWizardSteps) {
        const QString test = QString::fromLatin1(step.test);
        if (test.isEmpty()) continue;
        const QString title =
            QString::fromLatin1(step.testTitle).replace(QStringLiteral("%1"), QString::number(stepNumber(step.step)));
        const QString summary =
            outcomes.contains(test) ? outcomes.value(test).summary : QStringLiteral("Not tested in this session.");
        rows.append({test, outcomeBadge(outcomes, test), title, summary});
    }
    return rows;
}

QList<Row> testResults(const Outcomes &outcomes)
{
    static const QStringList onDashboard{QStringLiteral("pihole"), QStringLiteral("blocking"),
                                         QStringLiteral("system")};
    QList<Row> rows = outcomeRows(outcomes);
    rows.removeIf([&](const Row &row) { return !onDashboard.contains(row.id) || !outcomes.contains(row.id); });
    return rows;
}

} // namespace corvane
