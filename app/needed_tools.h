#pragma once

#include "app/app_state.h"
#include "runtime/colima_manager.h"
#include "runtime/docker_cli.h"

#include <algorithm>
#include <array>

namespace corvane {

/// A program that the set-up needs: what lists call it, where it is found, and the field that says whether it was.
struct NeededTool {
    const char *name;
    std::optional<QString> (*find)();
    bool (AppState::*isThere)() const;
    void (AppState::*setIsThere)(const bool &there);
    void (AppState::*changed)();
};

/// In the order in which they are listed. A new one takes its place here, after its field in AppState.
inline constexpr std::array kNeededTools{
    NeededTool{"Homebrew", ColimaManager::findHomebrew, &AppState::hasBrew, &AppState::setHasBrew,
               &AppState::hasBrewChanged},
    NeededTool{"colima", ColimaManager::find, &AppState::hasColima, &AppState::setHasColima,
               &AppState::hasColimaChanged},
    NeededTool{"docker", DockerCLI::find, &AppState::hasDocker, &AppState::setHasDocker, &AppState::hasDockerChanged},
};

/// Whether one is there now that was not when it was last looked for.
[[nodiscard]] inline bool hasToolCome(const AppState &state)
{
    return std::ranges::any_of(
        kNeededTools, [&state](const NeededTool &tool) { return !(state.*tool.isThere)() && tool.find().has_value(); });
}

} // namespace corvane
