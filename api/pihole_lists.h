#pragma once

#include "api/pihole_types.h"

#include <QByteArray>
#include <QList>

#include <expected>

namespace corvane {

// The answers about the lists of names that Pi-hole has subscribed to.

[[nodiscard]] std::expected<QList<PiholeList>, PiholeAPIError> parseLists(const QByteArray &json);

/// Whether what a run of the block lists printed shows its end. The status of the answer says nothing: it goes out
/// before the run begins.
[[nodiscard]] bool listsWereLoaded(const QByteArray &printed);

} // namespace corvane
