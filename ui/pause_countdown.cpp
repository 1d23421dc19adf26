#include "ui/pause_countdown.h"

#include "app/flow.h"
#include "ui/decisions/pause_texts.h"

#include <algorithm>

namespace corvane {

namespace {

constexpr int kSecond = 1000; // milliseconds
constexpr int kTicksPerQuestion = 10;

} // namespace

PauseCountdown::PauseCountdown(QObject *parent)
    : QObject(parent)
{
    m_tick.setInterval(kSecond);
    connect(&m_tick, &QTimer::timeout, this, &PauseCountdown::tick);
}

void PauseCountdown::setApp(AppModel *app)
{
    if (app == m_app) return;
    if (m_app) m_app->disconnect(this);
    m_app = app;
    if (app) connect(app, &AppModel::blockingChanged, this, &PauseCountdown::onReading);
    onReading();
    Q_EMIT appChanged();
}

void PauseCountdown::setLooked(bool looked)
{
    if (looked == m_looked) return;
    m_looked = looked;
    follow();
    // What was read before nobody looked says little now.
    if (m_looked && paused()) launch(m_app->refreshBlocking());
    Q_EMIT lookedChanged();
}

bool PauseCountdown::paused() const
{
    return m_app && m_app->blocking() && !m_app->blocking()->enabled && m_app->blocking()->timerSeconds;
}

double PauseCountdown::secondsLeft() const
{
    const double since = static_cast<double>(m_sinceReading.elapsed()) / kSecond;
    return std::max(0.0, *m_app->blocking()->timerSeconds - since);
}

void PauseCountdown::onReading()
{
    m_sinceReading.start();
    m_ticks = 0;
    follow();
}

void PauseCountdown::follow()
{
    if (!m_looked || !paused())
        m_tick.stop();
    else if (!m_tick.isActive())
        m_tick.start();
    show();
}

void PauseCountdown::tick()
{
    if (!paused()) return;
    if (++m_ticks % kTicksPerQuestion == 0 || secondsLeft() <= 0) launch(m_app->refreshBlocking());
    show();
}

void PauseCountdown::show()
{
    const QString left = paused() ? timeLeft(secondsLeft()) : QString();
    if (left == m_left) return;
    m_left = left;
    m_spoken = paused() ? spokenTimeLeft(secondsLeft()) : QString();
    Q_EMIT leftChanged();
}

} // namespace corvane
