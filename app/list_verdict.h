#pragma once

#include "api/pihole_types.h"

#include <QList>
#include <QString>

namespace corvane {

/// How a run of the block lists ended, in one sentence.
[[nodiscard]] QString listsVerdict(bool loaded, bool empty);

/// What became of a run in the middle of which Corvane was closed, in one sentence.
[[nodiscard]] QString leftListsVerdict(bool ended);

/// What is wrong with single lists after a run that came to its end, one sentence a line; empty when nothing is.
/// `before`: as they were when it began.
[[nodiscard]] QString listTroubles(const QList<PiholeList> &before, const QList<PiholeList> &after);

} // namespace corvane
