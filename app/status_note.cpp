#include "app/status_note.h"

namespace corvane {

namespace {

QString noteOnSilence(const ContainerState &container)
{
    if (!container.isRunning()) return {};
    if (container.text() == u"starting")
        return QStringLiteral("Its container runs and is still starting. Pi-hole does not answer yet.");
    return QStringLiteral("Its container runs, but Pi-hole does not answer.");
}

/// What keeps a Pi-hole that answers from blocking.
QString noteOnBlocking(const StatusFacts &facts)
{
    if (hasNoLists(facts.summary)) return QStringLiteral("Pi-hole has no block lists, so it blocks nothing.");
    if (facts.listsDamaged) return QStringLiteral("Pi-hole's block lists are damaged, so it blocks nothing.");
    if (facts.blocking && !facts.blocking->enabled && !facts.blocking->timerSeconds)
        return QStringLiteral("Blocking is off until you resume it.");
    return facts.detour;
}

} // namespace

QString statusNote(const StatusFacts &facts)
{
    if (facts.starting) return QStringLiteral("Pi-hole is starting. It answers in a moment.");
    if (!facts.checked) return {};
    const bool engineDown = facts.container.kind() == ContainerState::Kind::DockerDown;
    if (engineDown && !facts.engineProblem.isEmpty()) return facts.engineProblem;
    if (facts.trouble == DnsTrouble::None) return noteOnBlocking(facts);
    if (facts.trouble == DnsTrouble::Silent) return noteOnSilence(facts.container);
    return sentence(facts.trouble);
}

bool hasNoLists(const std::optional<PiholeSummary> &summary)
{
    return summary && summary->domainsBlocked && *summary->domainsBlocked <= 0;
}

} // namespace corvane
