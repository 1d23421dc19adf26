#pragma once

#include <QStringList>

namespace corvane::test {

/// Collects whatever Qt warns about while it lives; one at a time.
class QtWarnings {
public:
    QtWarnings();
    ~QtWarnings();
    QtWarnings(const QtWarnings &) = delete;
    QtWarnings &operator=(const QtWarnings &) = delete;

    [[nodiscard]] static QStringList all();
};

} // namespace corvane::test
