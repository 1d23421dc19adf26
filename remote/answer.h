#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QString>

#include <optional>

namespace corvane::remote {

/// One line of what Corvane answers: that it has begun, or how it ended.
struct Answer {
    /// How the command ends; absent while Corvane works on it.
    std::optional<int> status;
    /// A sentence for the caller; may be empty.
    QString text;
    /// The same as facts for a program, where there are any.
    QJsonObject facts = {};

    bool operator==(const Answer &) const = default;
};

/// No line of an answer is longer.
constexpr qsizetype kLongestAnswer = 16 * 1024;

/// One line, its end included.
[[nodiscard]] QByteArray encode(const Answer &answer);

/// Absent when the line is no answer of Corvane's.
[[nodiscard]] std::optional<Answer> decodeAnswer(const QByteArray &line);

} // namespace corvane::remote
