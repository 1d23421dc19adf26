#pragma once

#include "tests/flows/memory_settings.h"
#include "tests/ui/driver.h"
#include "tests/ui/qt_warnings.h"
#include "ui/commands.h"
#include "ui/file_panels.h"
#include "ui/looks.h"
#include "ui/windows.h"

#include <QImage>
#include <QUrl>
#include <gtest/gtest.h>

#include <functional>

namespace corvane::test {

/// A desktop that notes what it was asked for.
class NotedWorkspace final : public Workspace {
public:
    bool open(const QUrl &address) override
    {
        opened << address;
        return true;
    }
    [[nodiscard]] bool hasApplication(const QString &) const override { return false; }
    void copyToClipboard(const QString &text) override { copied = text; }
    void copySecretToClipboard(const QString &secret) override { copiedSecret = secret; }
    void activate() override
    {
        ++activations;
        if (onActivate) onActivate();
    }

    QList<QUrl> opened;
    QString copied;
    QString copiedSecret;
    int activations = 0;
    std::function<void()> onActivate;
};

/// A login item that can be told to refuse.
class ScriptedLoginItem final : public LoginItem {
public:
    [[nodiscard]] Status status() const override { return enabled ? Status::Enabled : Status::NotRegistered; }
    std::expected<void, QString> setEnabled(bool on) override
    {
        if (refuses) return std::unexpected(QStringLiteral("Operation not permitted"));
        enabled = on;
        return {};
    }

    bool enabled = false;
    bool refuses = false;
};

/// A user who wants things to look as a test says.
class ScriptedAppearance final : public Appearance {
public:
    [[nodiscard]] QColor accent() const override { return color; }
    [[nodiscard]] bool reducesMotion() const override { return still; }
    [[nodiscard]] bool increasesContrast() const override { return sharp; }

    QColor color{0x00, 0x7a, 0xff};
    bool still = false;
    bool sharp = false;
};

/// The real screens on a model that no program has touched: a test puts the model into a state, then looks, clicks and
/// types. Whatever Qt warns about fails the test.
class Screen : public testing::Test, protected Driver {
protected:
    Screen();
    ~Screen() override;

    void TearDown() override;

    /// Opens the main window at the set-up or the dashboard.
    void openDashboard();
    void openStep(int step);
    /// Opens the Settings window and looks at it from here on.
    void openSettings();
    /// Lets the views follow the model and what was started by appearing come to its end.
    void settle();

    [[nodiscard]] QQuickWindow *window() const override { return m_front ? m_front : m_windows.main(); }
    /// Looks at another window from here on.
    void lookAt(QQuickWindow *window) { m_front = window; }

    void setDark(bool dark);
    /// Keeps a picture of the window for people to look at.
    QImage picture(const QString &name);
    /// The same in light and in dark, which must differ.
    void bothPictures(const QString &name);

    MemorySettings m_settings;
    NotedWorkspace m_workspace;
    ScriptedLoginItem m_loginItem;
    ScriptedAppearance m_appearance;
    Dialogs m_dialogs;
    SystemClock m_clock;
    AppModel m_app;
    Looks m_looks;
    Commands m_commands;
    Windows m_windows;
    FilePanels m_filePanels;

private:
    QtWarnings m_warnings;
    QQuickWindow *m_front = nullptr;
};

} // namespace corvane::test
