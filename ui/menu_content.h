#pragma once

#include "app/app_model.h"

#include <QMenu>

#include <functional>

namespace corvane {

class Commands;

/// The menu of the menu-bar item: the status at a glance and the everyday actions. Rebuilt each time it opens.
class MenuContent : public QMenu {
    Q_OBJECT

public:
    struct Actions {
        std::function<void()> openWindow;
        std::function<void()> quit;
    };

    MenuContent(AppModel &app, Commands &commands, Actions actions);

private:
    void rebuild();

    AppModel &m_app;
    Commands &m_commands;
    Actions m_actions;
};

} // namespace corvane
