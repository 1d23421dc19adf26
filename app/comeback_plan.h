#pragma once

#include "app/comeback_record.h"
#include "runtime/container_state.h"

#include <array>
#include <chrono>
#include <optional>

namespace corvane {

/// What one look at Pi-hole has found.
struct PiholeLook {
    qint64 at = 0; ///< Seconds since 1970.
    bool answers = false;
    bool usedByMac = false;
    ContainerState container = ContainerState::dockerDown();
    /// Nothing of Corvane's that concerns Colima or the container was under way.
    bool undisturbed = true;
};

/// Decides from one look after the other whether Pi-hole is to be started again, and when.
class ComebackPlan {
public:
    /// Before the first try, the second and the third; there is no fourth.
    static constexpr std::array kPauses{std::chrono::seconds(10), std::chrono::seconds(30), std::chrono::seconds(120)};

    /// Answers what is to be recorded, if anything.
    [[nodiscard]] std::optional<ComebackEntry> see(const PiholeLook &look);

    /// How long to wait before the next try; absent while there is nothing to try.
    [[nodiscard]] std::optional<std::chrono::seconds> pause() const;
    /// The number of the next try, from 1 on, or of the one that is under way.
    [[nodiscard]] int number() const { return m_now ? m_now->tries + (m_now->trying ? 0 : 1) : 0; }

    [[nodiscard]] bool trying() const { return m_now && m_now->trying; }
    void beginTry();
    /// `started`: the container runs now. Pi-hole may answer only later.
    void endTry(bool started);
    /// The user does not want it now: there is no further try. Answers what is to be recorded.
    [[nodiscard]] std::optional<ComebackEntry> giveUp();

    /// Whether a container like this can be started; one that Docker is about to restart need not be.
    [[nodiscard]] static bool canStart(const ContainerState &container);

private:
    /// A time in which this Mac asks a Pi-hole that does not run.
    struct Now {
        Outage outage = Outage::Opened;
        qint64 since = 0;
        int tries = 0;
        bool trying = false;
        /// The last try has started the container.
        bool ours = false;
        bool over = false;
        bool canStart = false;
    };

    [[nodiscard]] ComebackEntry entry(ComebackEnd end) const;

    /// What has come between this Mac and Pi-hole since it was last seen answering, if that is known.
    std::optional<Outage> m_origin = Outage::Opened;
    std::optional<Now> m_now;
    qint64 m_seen = 0;
};

} // namespace corvane
