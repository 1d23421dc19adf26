#pragma once

#include "api/pihole_types.h"
#include "app/dns_trouble.h"
#include "runtime/container_state.h"

#include <optional>

namespace corvane {

/// What is known about Pi-hole's state beyond its colour.
struct StatusFacts {
    bool starting = false;
    bool checked = false;
    ContainerState container = ContainerState::missing();
    QString engineProblem = {};
    DnsTrouble trouble = DnsTrouble::None;
    std::optional<PiholeSummary> summary = {};
    std::optional<PiholeBlocking> blocking = {};
    /// Who takes this Mac's lookups before Pi-hole.
    QString detour = {};
    bool listsDamaged = false;
};

/// The line beside the status that says what the colour and its sentence leave out; empty when that is nothing.
[[nodiscard]] QString statusNote(const StatusFacts &facts);

/// Whether Pi-hole has said that its block lists hold no name.
[[nodiscard]] bool hasNoLists(const std::optional<PiholeSummary> &summary);

} // namespace corvane
