#pragma once

#include "app/app_model.h"

#include <QTimer>

#include <functional>

namespace corvane {

/// The everyday actions of the menu, which may be used with every window closed: one that does not come to what was
/// asked for opens the main window at the dashboard, where its message is.
class Errands : public QObject {
    Q_OBJECT

public:
    Errands(AppModel &app, std::function<void()> openWindow);

    void togglePause();
    void pauseFor(PauseLength::Name length);
    void toggleStartStop();

private:
    [[nodiscard]] Flow<> runPause();
    [[nodiscard]] Flow<> runPauseFor(PauseLength::Name length);
    void look();
    void tell();

    AppModel &m_app;
    std::function<void()> m_openWindow;
    /// The notice that stood there when a start or a stop was asked for; absent when none is under way.
    std::optional<QString> m_noticeBefore;
    QTimer m_look;
};

} // namespace corvane
