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

Flow<> AppModel::comeBack()
{
    if (m_comeback.watched() || !m_comeback.pause()) co_return;
    m_comeback.setWatched(true);
    const auto done = qScopeGuard([model = QPointer<AppModel>(this)] {
        if (model) model->m_comeback.setWatched(false);
    });
    while (const auto pause = m_comeback.pause()) {
        co_await m_clock.pause(*pause);
        co_await tryToComeBack();
    }
}

/// Does what the banner's button does, unless Pi-hole is back already or somebody is about to change it.
Flow<> AppModel::tryToComeBack()
{
    if (!m_activities.mayBegin(Activity::StartContainer)) co_return;
    const bool answers = co_await PiholeController::knowsItsName();
    if (answers) co_return;
    const ContainerState container = co_await PiholeController::containerState();
    if (!ComebackPlan::canStart(container)) co_return;
    // By now the user may have stopped it, or be asked something.
    if (!m_comeback.pause() || !m_activities.mayBegin(Activity::StartContainer)) co_return;
    m_comeback.beginTry();
    co_await startPiholeNow(Place::Banner);
    m_comeback.endTry(containerState().isRunning());
}

} // namespace corvane
