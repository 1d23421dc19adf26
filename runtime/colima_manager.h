#pragma once

#include "exec/command_step.h"

#include <QCoro/QCoroTask>

#include <optional>

namespace corvane {

/// Builds the steps that install, start and restart Colima. A list is empty when a tool that it needs is missing; tools
/// are looked up afresh for every list.
class ColimaManager {
public:
    /// Where Homebrew puts programs.
    [[nodiscard]] static const QStringList &homebrewDirs();
    /// The installed Homebrew.
    [[nodiscard]] static std::optional<QString> findHomebrew();
    /// "start" with Corvane's fixed sizes: 2 CPUs, 2 GiB of memory, 10 GiB of disk.
    [[nodiscard]] static const QStringList &startArguments();

    /// The installed colima.
    [[nodiscard]] static std::optional<QString> find();
    /// The installed colima, or where Homebrew will put it; absent when neither is found.
    [[nodiscard]] static std::optional<QString> expectedColimaPath();
    /// Needs Homebrew: installs Colima and Docker's client, and starts Colima.
    [[nodiscard]] static CommandSteps installSteps();
    /// Needs Colima: "colima start"; before it a forced stop when something of a machine that is gone is in the way.
    [[nodiscard]] static CommandSteps startSteps(bool clearAwayFirst = false);
    /// Needs Homebrew and Colima: switches Homebrew's login service for Colima. On: a Colima that runs is stopped
    /// first, because the service starts its own. Off: Colima is started by hand afterwards.
    [[nodiscard]] static CommandSteps autostartSteps(bool enable, bool colimaRunning);
    /// Whether the installed colima knows "--port-forwarder"; asks it for at most ten seconds.
    [[nodiscard]] static QCoro::Task<bool> supportsPortForwarderFlag();
    /// Needs Colima: stops it and starts it with the forwarder that also forwards UDP.
    [[nodiscard]] static CommandSteps restartWithGrpcSteps();
};

} // namespace corvane
