#include "ui/menu_content.h"

#include "ui/commands.h"
#include "ui/decisions/dashboard_texts.h"

namespace corvane {

MenuContent::MenuContent(AppModel &app, Looks &looks, Commands &commands, Actions actions)
    : m_app(app)
    , m_looks(looks)
    , m_actions(std::move(actions))
    , m_errands(app, m_actions.openWindow)
    , m_status(addAction(QString()))
{
    m_status->setEnabled(false);
    addSeparator();
    addAction(QStringLiteral("Open dashboard"), &commands, &Commands::openDashboard);
    m_pause = addAction(QString(), &m_errands, &Errands::togglePause);
    m_startStop = addAction(QString(), &m_errands, &Errands::toggleStartStop);
    addSeparator();
    addAction(QStringLiteral("Open window"), this, [this] { m_actions.openWindow(); });
    addAction(QStringLiteral("Quit Corvane"), this, [this] { m_actions.quit(); });

    addPauses();

    connect(this, &QMenu::aboutToShow, this, &MenuContent::follow);
    connect(&m_app, &AppModel::statusLineChanged, this, &MenuContent::follow);
    connect(&m_app, &AppModel::containerStateChanged, this, &MenuContent::follow);
    connect(&m_looks, &Looks::pauseLabelChanged, this, &MenuContent::follow);
    connect(&m_looks, &Looks::operatingChanged, this, &MenuContent::follow);
    connect(&m_looks, &Looks::busyChanged, this, &MenuContent::follow);
    follow();
}

/// The other lengths of a pause, and what is left of one, which is counted only while the menu is open.
void MenuContent::addPauses()
{
    addSeparator();
    m_pauseLeft = addAction(QString());
    m_pauseLeft->setEnabled(false);
    m_lengths.setTitle(QStringLiteral("Pause blocking for"));
    addMenu(&m_lengths);
    const auto add = [this](const char *text, PauseLength::Name length) {
        m_lengths.addAction(QString::fromLatin1(text), &m_errands, [this, length] { m_errands.pauseFor(length); });
    };
    add("30 seconds", PauseLength::HalfMinute);
    add("5 minutes", PauseLength::FiveMinutes);
    add("1 hour", PauseLength::OneHour);
    add("Until tomorrow morning", PauseLength::UntilMorning);
    connect(this, &QMenu::aboutToShow, &m_countdown, [this] { m_countdown.setLooked(true); });
    connect(this, &QMenu::aboutToHide, &m_countdown, [this] { m_countdown.setLooked(false); });
    connect(&m_countdown, &PauseCountdown::leftChanged, this, &MenuContent::followCountdown);
    m_countdown.setApp(&m_app);
    followCountdown();
}

void MenuContent::followCountdown()
{
    m_pauseLeft->setVisible(!m_countdown.left().isEmpty());
    m_pauseLeft->setText(QStringLiteral("Blocking is paused: %1 left").arg(m_countdown.left()));
}

void MenuContent::follow()
{
    m_status->setText(m_app.statusLine());
    m_pause->setText(m_looks.pauseLabel());
    m_startStop->setText(startStopLabel(m_app.containerState()));
    m_startStop->setEnabled(!m_looks.operating() && !m_looks.controlling());
}

} // namespace corvane
