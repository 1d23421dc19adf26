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

    connect(this, &QMenu::aboutToShow, this, &MenuContent::follow);
    connect(&m_app, &AppModel::statusLineChanged, this, &MenuContent::follow);
    connect(&m_app, &AppModel::containerStateChanged, this, &MenuContent::follow);
    connect(&m_looks, &Looks::pauseLabelChanged, this, &MenuContent::follow);
    connect(&m_looks, &Looks::operatingChanged, this, &MenuContent::follow);
    connect(&m_looks, &Looks::controllingChanged, this, &MenuContent::follow);
    follow();
}

void MenuContent::follow()
{
    m_status->setText(m_app.statusLine());
    m_pause->setText(m_looks.pauseLabel());
    m_startStop->setText(startStopLabel(m_app.containerState()));
    m_startStop->setEnabled(!m_looks.operating() && !m_looks.controlling());
}

} // namespace corvane
