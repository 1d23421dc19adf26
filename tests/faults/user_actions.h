#pragma once

#include "tests/flows/flow_test.h"

#include <functional>
#include <optional>

namespace corvane::test {

/// One thing that a user can begin from a view, on a Mac that is set up.
struct UserAction {
    /// As ui/commands.h calls it.
    const char *name;
    /// Under which Corvane lists it; none for what excludes nothing.
    std::optional<Activity> activity;
    std::function<Flow<>(AppModel &)> begin;
    /// Where the user reads how it went, or why it did not begin.
    std::function<QString(const AppModel &)> said;
    /// When it may not begin, nothing is said: the button that began it is off, or the same thing is under way.
    bool quietlyRefused = false;
    /// What has to be so before it makes sense; none when any Mac will do.
    std::function<void(AppModel &)> prepare = {};
    /// A sentence that an earlier action left does not count.
    std::function<void(AppModel &)> forget = {};
    /// Done twice, it does the opposite.
    bool turnsRound = false;
};

[[nodiscard]] const QList<UserAction> &userActions();

/// What `ui/commands.h` offers and changes no more than what is shown, so that nothing can go wrong with it.
[[nodiscard]] const QStringList &commandsThatOnlyShow();

/// Puts the Mac into the state in which every action makes sense: Pi-hole runs, the Mac uses it, the old servers are
/// saved, a newer version is on offer, and there are an archive to restore and a browser to prove.
void prepareForActions(AppModel &model, User &user);

} // namespace corvane::test
