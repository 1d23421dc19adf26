#pragma once

#include <QString>

struct PlayedObject;

namespace corvane::played {

/// The played store of every user's settings.
struct Preferences {
    /// Puts a value at "application/user/host/key".
    static void put(const QString &place, PlayedObject *value);
    static void clear();
};

} // namespace corvane::played
