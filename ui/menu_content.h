#pragma once

#include "ui/errands.h"
#include "ui/looks.h"
#include "ui/pause_countdown.h"

#include <QMenu>

#include <functional>

namespace corvane {

class Commands;

/// The menu of the menu-bar item: the status at a glance and the everyday actions. Its items last; what they say and
/// whether they can be chosen follows the model, while the menu is open too.
class MenuContent : public QMenu {
    Q_OBJECT

public:
    struct Actions {
        std::function<void()> openWindow;
        std::function<void()> quit;
    };

    MenuContent(AppModel &app, Looks &looks, Commands &commands, Actions actions);

private:
    void addPauses();
    void follow();
    void followCountdown();

    AppModel &m_app;
    Looks &m_looks;
    Actions m_actions;
    Errands m_errands;
    QAction *m_status;
    QAction *m_pause = nullptr;
    QAction *m_startStop = nullptr;
    QAction *m_pauseLeft = nullptr;
    QMenu m_lengths;
    PauseCountdown m_countdown;
};

} // namespace corvane
