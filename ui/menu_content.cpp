#include "ui/menu_content.h"

#include "ui/commands.h"
#include "ui/decisions/dashboard_texts.h"

namespace corvane {

MenuContent::MenuContent(AppModel &app, Commands &commands, Actions actions)
    : m_app(app)
    , m_commands(commands)
    , m_actions(std::move(actions))
{
    connect(this, &QMenu::aboutToShow, this, &MenuContent::rebuild);
    // Where the desktop draws the menu itself, it asks for the items before it tells that it opens.
    connect(&m_app, &AppModel::statusLineChanged, this, &MenuContent::rebuild);
    connect(&m_app, &AppModel::blockingChanged, this, &MenuContent::rebuild);
    connect(&m_app, &AppModel::containerStateChanged, this, &MenuContent::rebuild);
    rebuild();
}

void MenuContent::rebuild()
{
    // What is being read or pointed at stays as it is.
    if (isVisible()) return;
    clear();
    addAction(m_app.statusLine())->setEnabled(false);
    addSeparator();
    addAction(QStringLiteral("Open dashboard"), &m_commands, &Commands::openDashboard);
    addAction(pauseLabel(m_app.blocking()), &m_commands, &Commands::togglePause);
    addAction(startStopLabel(m_app.containerState()), &m_commands, &Commands::toggleStartStop);
    addSeparator();
    addAction(QStringLiteral("Open window"), this, [this] { m_actions.openWindow(); });
    addAction(QStringLiteral("Quit Corvane"), this, [this] { m_actions.quit(); });
}

} // namespace corvane
