#pragma once

#include "app/check_row.h"
#include "app/test_outcome.h"
#include "dns/network_service.h"
#include "dns/resolver_report.h"
#include "ui/decisions/badge.h"

#include <QList>

namespace corvane {

/// What one row of a list shows.
class Row {
    Q_GADGET
    Q_PROPERTY(QString id MEMBER id CONSTANT)
    Q_PROPERTY(corvane::Badge badge MEMBER badge CONSTANT)
    Q_PROPERTY(QString title MEMBER title CONSTANT)
    Q_PROPERTY(QString detail MEMBER detail CONSTANT)
    Q_PROPERTY(bool enabled MEMBER enabled CONSTANT)
    Q_PROPERTY(QString note MEMBER note CONSTANT)

public:
    QString id;
    Badge badge;
    QString title;
    QString detail;
    /// Whether the row's control, if it has one, can be used.
    bool enabled = true;
    /// What Corvane adds below the detail.
    QString note = {};

    bool operator==(const Row &) const = default;
};

[[nodiscard]] Badge checkBadge(CheckState state);
[[nodiscard]] QList<Row> checkRows(const CheckRows &rows);

/// A tool that the set-up needs.
[[nodiscard]] Row toolRow(const QString &name, bool found);

/// What the blocking test found; empty before its first run.
[[nodiscard]] QList<Row> blockingRows(const std::optional<BlockingTestResult> &result);
/// Today's counters as the blocking test read them; empty when it could not.
[[nodiscard]] QString blockingCounts(const std::optional<BlockingTestResult> &result);

/// One row for each network service; the id is its name.
[[nodiscard]] QList<Row> serviceRows(const QList<NetworkService> &services);
/// The DNS servers that macOS uses now, or "unknown".
[[nodiscard]] QString serversInUse(const std::optional<ResolverReport> &report);

/// The five tests of this session in the order of the steps.
[[nodiscard]] QList<Row> outcomeRows(const Outcomes &outcomes);
/// Of the tests that the dashboard runs, those that have ended.
[[nodiscard]] QList<Row> testResults(const Outcomes &outcomes);
/// The badge of one test: passed, failed or not run yet.
[[nodiscard]] Badge outcomeBadge(const Outcomes &outcomes, const QString &test);
/// What to do about a failed test of Docker; empty while there is none.
[[nodiscard]] QString dockerHint(const Outcomes &outcomes, bool hasDocker);
/// What the system DNS test proved; empty before its first run.
[[nodiscard]] QString systemVerdict(const Outcomes &outcomes);
/// The resolver's warnings; empty until the test of this Mac's DNS has run.
[[nodiscard]] QString resolverWarning(const std::optional<ResolverReport> &report, const Outcomes &outcomes);

} // namespace corvane
