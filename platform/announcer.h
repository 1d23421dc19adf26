#pragma once

#include <QString>

#include <memory>

namespace corvane {

/// Has a screen reader say something that nobody asked it to read.
class Announcer {
public:
    virtual ~Announcer() = default;

    /// Says the sentence once; nothing when no screen reader listens.
    virtual void announce(const QString &sentence) = 0;
};

/// The way to the screen readers of this system.
[[nodiscard]] std::unique_ptr<Announcer> systemAnnouncer();

} // namespace corvane
