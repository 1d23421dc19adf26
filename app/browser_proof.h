#pragma once

#include <QHash>
#include <QString>

namespace corvane {

/// What a test of one browser found: it opened two made-up names, ten seconds apart.
enum class BrowserProof {
    Running,    ///< The test has not ended.
    AsksPihole, ///< Both names arrived in Pi-hole's log.
    CameLate,   ///< Only the second one arrived.
    GoesPast,   ///< Only the first one arrived: the browser went over to a server of its own.
    NeverAsks,  ///< No name arrived.
    NotOpened,  ///< The browser could not be opened.
    Unread,     ///< Pi-hole's log could not be read.
    Disturbed,  ///< A name is missing, but Pi-hole was changed meanwhile.
};

/// By the browser's id.
using BrowserProofs = QHash<QString, BrowserProof>;

} // namespace corvane
