#include "app/comeback_plan.h"

#include "app/day_record.h"

#include <algorithm>
#include <utility>

namespace corvane {

std::optional<ComebackEntry> ComebackPlan::see(const PiholeLook &look)
{
    const bool slept = m_seen > 0 && look.at - m_seen > DayRecord::kLongestSilence;
    m_seen = look.at;
    if (slept) {
        m_origin = Outage::Woke;
        m_now.reset();
    }
    if (look.answers) {
        const bool ours = m_now && (m_now->ours || m_now->trying);
        const std::optional<ComebackEntry> back = ours ? std::optional(entry(ComebackEnd::Back)) : std::nullopt;
        m_origin.reset();
        m_now.reset();
        return back;
    }
    if (!look.undisturbed) return std::nullopt;
    if (!look.usedByMac) {
        m_now.reset();
        return std::nullopt;
    }
    const bool engineGone = look.container.kind() == ContainerState::Kind::DockerDown;
    if (!m_now) {
        m_now = Now();
        m_now->outage = m_origin.value_or(engineGone ? Outage::Colima : Outage::Container);
        m_now->since = look.at;
    }
    m_now->canStart = canStart(look.container);
    const bool failed = m_now->canStart && m_now->tries == std::ssize(kPauses) && !m_now->over;
    if (!failed) return std::nullopt;
    m_now->over = true;
    return entry(ComebackEnd::Failed);
}

std::optional<std::chrono::seconds> ComebackPlan::pause() const
{
    if (!m_now || m_now->over || m_now->trying || !m_now->canStart) return std::nullopt;
    if (m_now->tries >= std::ssize(kPauses)) return std::nullopt;
    return kPauses[static_cast<size_t>(m_now->tries)];
}

void ComebackPlan::beginTry()
{
    if (!m_now) return;
    m_now->trying = true;
    ++m_now->tries;
}

void ComebackPlan::endTry(bool started)
{
    if (!m_now) return;
    m_now->trying = false;
    m_now->ours = started;
    m_now->canStart = !started;
}

std::optional<ComebackEntry> ComebackPlan::giveUp()
{
    if (!m_now || std::exchange(m_now->over, true)) return std::nullopt;
    m_now->trying = false;
    return entry(ComebackEnd::Cancelled);
}

bool ComebackPlan::canStart(const ContainerState &container)
{
    if (container.kind() == ContainerState::Kind::DockerDown) return true;
    return container.kind() == ContainerState::Kind::Stopped && container.text() != u"restarting";
}

ComebackEntry ComebackPlan::entry(ComebackEnd end) const
{
    return {m_seen, m_now->outage, end, std::max<qint64>(0, m_seen - m_now->since)};
}

} // namespace corvane
