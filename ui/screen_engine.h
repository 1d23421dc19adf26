#pragma once

#include "ui/commands.h"
#include "ui/looks.h"

#include <QQmlEngine>

namespace corvane {

/// An engine whose views see the one model, its looks and the commands.
class ScreenEngine : public QQmlEngine {
    Q_OBJECT

public:
    ScreenEngine(AppModel &app, Looks &looks, Commands &commands);

    [[nodiscard]] AppModel *app() const { return m_app; }
    [[nodiscard]] Looks *looks() const { return m_looks; }
    [[nodiscard]] Commands *commands() const { return m_commands; }

private:
    AppModel *m_app;
    Looks *m_looks;
    Commands *m_commands;
};

} // namespace corvane
