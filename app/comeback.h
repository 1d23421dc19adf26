#pragma once

#include "app/clock.h"
#include "app/comeback_plan.h"
#include "app/published.h"
#include "app/settings_store.h"

#include <QObject>

namespace corvane {

/// Pi-hole's coming back by itself: what the user has chosen, what is about to happen, and what was done.
class Comeback : public QObject {
    Q_OBJECT

    /// Pi-hole is started again when it stops unasked.
    CORVANE_PERSISTED(Comeback, bool, startsAgain, setStartsAgain)
    /// The banner has started Pi-hole once, so it offers that this happens by itself.
    CORVANE_PERSISTED(Comeback, bool, bannerHasStarted, setBannerHasStarted)
    /// The user has stopped or removed Pi-hole, and it has not run since.
    CORVANE_PERSISTED(Comeback, bool, stoppedByUser, setStoppedByUser)
    /// What is about to happen, else what was done in the last day; empty when that is nothing.
    CORVANE_PUBLISHED(Comeback, QString, news, setNews, QString())
    /// What was done, one sentence each, newest first.
    CORVANE_PUBLISHED(Comeback, QStringList, history, setHistory, QStringList())

public:
    Comeback(SettingsStore &settings, const Clock &clock);

    /// Takes in what a look has found; its time is now.
    void see(PiholeLook look);
    /// How long to wait before Pi-hole is started again; absent while it is not to be.
    [[nodiscard]] std::optional<std::chrono::seconds> pause() const;

    /// Whether somebody waits for the next try. There is one at most.
    [[nodiscard]] bool watched() const { return m_watched; }
    void setWatched(bool watched);
    void beginTry();
    /// `started`: the container runs now.
    void endTry(bool started);
    /// The user has called the start off.
    void giveUp();

private:
    void record(const std::optional<ComebackEntry> &entry);
    void tell();
    [[nodiscard]] QString whatIsNext() const;

    SettingsStore &m_settings;
    const Clock &m_clock;
    ComebackPlan m_plan;
    ComebackRecord m_record;
    bool m_watched = false;
};

} // namespace corvane
