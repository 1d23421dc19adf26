#pragma once

#include <QString>

namespace corvane {

/// The titles by which a screen knows the operations that began on it.
struct OperationTitle {
    /// "%1" is the port.
    static constexpr QLatin1StringView kMovingPort{"Recreating Pi-hole on port %1"};
    static constexpr QLatin1StringView kTurningColimaOn{"Turning on Colima at login"};
    static constexpr QLatin1StringView kTurningColimaOff{"Turning off Colima at login"};
};

} // namespace corvane
