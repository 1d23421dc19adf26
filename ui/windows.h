#pragma once

#include "app/dialogs.h"
#include "platform/workspace.h"
#include "ui/screen_engine.h"
#include "ui/window_place.h"

#include <QPointer>
#include <QQuickWindow>

#include <functional>
#include <memory>

namespace corvane {

/// The windows: at most one main window, one Settings window and one alert. What they take is given back when the last
/// of them has closed.
class Windows : public QObject {
    Q_OBJECT

public:
    /// A fresh engine for the windows that are about to open.
    using MakeEngine = std::function<std::unique_ptr<ScreenEngine>()>;

    Windows(MakeEngine makeEngine, Dialogs &dialogs, Workspace &workspace, SettingsStore &store);
    ~Windows() override;

    /// Opens the main window, or brings the open one to the front.
    void openMain();
    /// The same for a user who is in another application.
    void comeForward();
    void openSettings();
    /// Brings the question to the front that waits for its answer, if there is one.
    void showQuestion();

    [[nodiscard]] QQuickWindow *main() const { return m_main; }
    [[nodiscard]] QQuickWindow *settings() const { return m_settings; }
    [[nodiscard]] QQuickWindow *alert() const { return m_alert; }

Q_SIGNALS:
    void quitRequested();

private Q_SLOTS:
    void openSettingsWindow() { openSettings(); }
    void onAnswered(bool accepted);

private:
    using Window = QPointer<QQuickWindow>;

    bool eventFilter(QObject *watched, QEvent *event) override;
    [[nodiscard]] QQuickWindow *make(const QString &view, const QVariantMap &properties);
    bool prepare(Window &window, const QString &view);
    void follow();
    void closeAlert();
    void giveBack();

    MakeEngine m_makeEngine;
    Dialogs &m_dialogs;
    Workspace &m_workspace;
    WindowPlace m_place;
    std::unique_ptr<ScreenEngine> m_engine;
    /// Every window that is not yet deleted: the engine must outlive them.
    QSet<QObject *> m_living;
    Window m_main;
    Window m_settings;
    Window m_alert;
    std::optional<Alert> m_shown;
};

} // namespace corvane
