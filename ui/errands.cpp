#include "ui/errands.h"

#include "app/flow.h"

namespace corvane {

Errands::Errands(AppModel &app, std::function<void()> openWindow)
    : m_app(app)
    , m_openWindow(std::move(openWindow))
{
    // Between two parts of one action nothing is marked as busy for a moment.
    m_look.setSingleShot(true);
    m_look.setInterval(0);
    connect(&m_look, &QTimer::timeout, this, &Errands::look);
    const auto lookSoon = [this] {
        if (m_noticeBefore) m_look.start();
    };
    connect(&m_app, &AppModel::busyChanged, this, lookSoon);
    for (OperationRunner *runner : {m_app.installOp(), m_app.startOp(), m_app.maintOp()})
        connect(runner, &OperationRunner::runningChanged, this, lookSoon);
}

void Errands::togglePause() { launch(runPause()); }

Flow<> Errands::runPause()
{
    const bool shouldBlock = m_app.blocking() && !m_app.blocking()->enabled;
    co_await m_app.togglePause();
    const bool done = m_app.blocking() && m_app.blocking()->enabled == shouldBlock;
    if (!done) tell();
}

void Errands::pauseFor(PauseLength::Name length) { launch(runPauseFor(length)); }

Flow<> Errands::runPauseFor(PauseLength::Name length)
{
    co_await m_app.pauseBlocking(length);
    // What was said instead is the reason.
    if (m_app.apiMessage() != PauseLength::sentence(length)) tell();
}

void Errands::toggleStartStop()
{
    m_noticeBefore = m_app.notice();
    launch(m_app.toggleStartStop());
    m_look.start();
}

void Errands::look()
{
    if (!m_noticeBefore || m_app.operationRunning() || m_app.busy().contains(QStringLiteral("container"))) return;
    const QString before = *std::exchange(m_noticeBefore, std::nullopt);
    const bool noticed = !m_app.notice().isEmpty() && m_app.notice() != before;
    // The container's state may come a moment later, with a look that was under way already.
    if (noticed || !m_app.startMessage().isEmpty()) tell();
}

void Errands::tell()
{
    m_app.setShowWizard(false);
    m_openWindow();
}

} // namespace corvane
