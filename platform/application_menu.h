#pragma once

#include <QObject>

#include <functional>
#include <memory>

namespace corvane {

/// What the system's own menu and Dock ask of Corvane.
struct ApplicationCommands {
    std::function<void()> openWindow;
    std::function<void()> openSettings;
    /// A request, never an order: Corvane ends only through QCoreApplication::exit().
    std::function<void()> quit;
    /// Told, never asked: the session ends. Corvane does what cannot be left undone, within moments and without a
    /// question, and ends through QCoreApplication::exit() as well.
    std::function<void()> endWithSession;
    std::function<void()> openHelp;
};

/// The application's menu at the top of the screen, there as long as the answer lives; null where a system has none.
[[nodiscard]] std::unique_ptr<QObject> systemApplicationMenu(const ApplicationCommands &commands);

} // namespace corvane
