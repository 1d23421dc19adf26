#pragma once

#include "runtime/dig_result.h"

#include <QCoro/QCoroTask>
#include <QString>

namespace corvane {

/// What is between the Mac and an answer from Pi-hole's resolver, as far as it can be told from the outside.
enum class DnsTrouble {
    None,
    Silent,           ///< Nothing answers on 127.0.0.1.
    NothingBehind,    ///< Pi-hole answers, but the server that it asks does not.
    OldAnswers,       ///< The same, while Pi-hole still knows an answer from before.
    TooManyQuestions, ///< Pi-hole refuses: its limit of questions a minute is used up.
    NameWithheld,     ///< Pi-hole answers, but has no address for the name that is asked for.
    OtherServer,      ///< Something else than Pi-hole answers on 127.0.0.1.
};

/// Why `reply`, to a question for example.com at 127.0.0.1, is no proof of a working Pi-hole. Asks Pi-hole for its own
/// name where that tells two cases apart; an answer while its container runs counts as Pi-hole's.
[[nodiscard]] QCoro::Task<DnsTrouble> dnsTroubleBehind(DigResult reply, bool containerRuns);

/// The same, and makes sure that an answer is Pi-hole's.
[[nodiscard]] QCoro::Task<DnsTrouble> dnsTroubleProven(DigResult reply);

/// The trouble in words for the user; empty for none.
[[nodiscard]] QString sentence(DnsTrouble trouble);

} // namespace corvane
