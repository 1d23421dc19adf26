#pragma once

#include <QMetaType>

namespace corvane {

/// The state of Pi-hole's rule that keeps browsers with it while 1.1.1.1 is this Mac's backup server.
enum class BrowserRule {
    NotNeeded,   ///< This Mac does not use 1.1.1.1 behind Pi-hole, or it is not known yet.
    InPlace,     ///< Pi-hole answers that the secure DNS of 1.1.1.1 does not exist.
    Interrupted, ///< It is in place, but was without effect since: Pi-hole was silent, or blocking was off.
    Refused,     ///< Pi-hole did not take it.
    SwitchedOff, ///< It is there, and somebody switched it off.
    Overruled,   ///< It is there, and Pi-hole answers all the same.
};

} // namespace corvane

Q_DECLARE_METATYPE(corvane::BrowserRule)
