#pragma once

#include "app/clock.h"
#include "tests/flows/memory_settings.h"
#include "ui/commands.h"
#include "ui/looks.h"
#include "ui/windows.h"

namespace corvane::bench {

/// A model, and everything that is between it and its user.
class Screens {
public:
    [[nodiscard]] AppModel &model() { return m_model; }
    [[nodiscard]] Windows &windows() { return m_windows; }
    [[nodiscard]] QQuickWindow &window() const { return *m_windows.main(); }
    /// An engine as the windows have it.
    [[nodiscard]] std::unique_ptr<ScreenEngine> makeEngine()
    {
        return std::make_unique<ScreenEngine>(m_model, m_looks, m_commands);
    }
    /// The item of this name in the main window, which must be there.
    [[nodiscard]] QQuickItem &item(const char *name) const;

private:
    test::MemorySettings m_settings;
    SystemClock m_clock;
    Dialogs m_dialogs;
    std::unique_ptr<Workspace> m_workspace = systemWorkspace();
    std::unique_ptr<LoginItem> m_loginItem = systemLoginItem();
    std::unique_ptr<Appearance> m_appearance = systemAppearance();
    AppModel m_model{Surroundings{m_settings, m_dialogs, *m_workspace, *m_loginItem, m_clock, QUrl()}};
    Looks m_looks{m_model, *m_appearance};
    Commands m_commands{m_model, *m_workspace};
    Windows m_windows{[this] { return makeEngine(); }, m_dialogs, *m_workspace, m_settings};
};

/// Lets the event loop run.
void passTime(int milliseconds);

} // namespace corvane::bench
