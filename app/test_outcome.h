#pragma once

#include <QDateTime>
#include <QHash>
#include <QString>

namespace corvane {

/// The outcome of one test since launch.
struct TestOutcome {
    bool passed = false;
    QString summary;
    /// When the test finished.
    QDateTime date;

    bool operator==(const TestOutcome &) const = default;
};

/// Outcomes by test: "docker", "pihole", "blocking", "system", "browser".
using Outcomes = QHash<QString, TestOutcome>;

/// Whether the test has an outcome and passed.
[[nodiscard]] bool passed(const Outcomes &outcomes, const QString &test);

/// What the blocking test found.
struct BlockingTestResult {
    /// The first test domain that Pi-hole blocked; absent when none was.
    std::optional<QString> blockedDomain;
    /// How it was blocked, in words.
    std::optional<QString> blockedKind;
    /// What "example.com" resolved to, or why not.
    QString allowedAnswer;
    /// Today's counters; absent when they could not be read.
    std::optional<qint64> queries;
    std::optional<qint64> blockedToday;
    /// An explanation for the user.
    std::optional<QString> note;

    bool operator==(const BlockingTestResult &) const = default;
};

} // namespace corvane
