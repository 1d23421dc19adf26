#include "app/app_model.h"
#include "runtime/pihole_controller.h"

#include <QPointer>
#include <QScopeGuard>

namespace corvane {

/// Takes in what the look that ends now has found, and waits for the next try where there is to be one.
void AppModel::followOutage(bool undisturbed)
{
    const bool free = undisturbed && m_activities.mayBegin(Activity::StartContainer);
    m_comeback.see(
        {.answers = answering(), .usedByMac = usedByMac(), .container = containerState(), .undisturbed = free});
    launch(comeBack());
}

QCoro::Task<> AppModel::comeBack()
{
    if (m_comeback.watched() || !m_comeback.pause()) co_return;
    const QPointer<AppModel> alive(this);
    m_comeback.setWatched(true);
    const auto done = qScopeGuard([alive] {
        if (alive) alive->m_comeback.setWatched(false);
    });
    while (const auto pause = m_comeback.pause()) {
        co_await m_clock.pause(*pause);
        if (!alive) co_return;
        co_await tryToComeBack();
        if (!alive) co_return;
    }
}

/// Does what the banner's button does, unless Pi-hole is back already or somebody is about to change it.
QCoro::Task<> AppModel::tryToComeBack()
{
    const QPointer<AppModel> alive(this);
    if (!m_activities.mayBegin(Activity::StartContainer)) co_return;
    const bool answers = co_await PiholeController::knowsItsName();
    if (!alive || answers) co_return;
    const ContainerState container = co_await PiholeController::containerState();
    if (!alive || !ComebackPlan::canStart(container)) co_return;
    // Meanwhile the user may have stopped it, or be asked something.
    if (!m_comeback.pause() || !m_activities.mayBegin(Activity::StartContainer)) co_return;
    m_comeback.beginTry();
    co_await startPiholeNow(Place::Banner);
    if (alive) m_comeback.endTry(containerState().isRunning());
}

} // namespace corvane
