#pragma once

#include "app/app_model.h"
#include "tests/flows/memory_settings.h"
#include "tests/flows/user.h"

namespace corvane::test {

/// A model in a program of its own, on the simulated Mac around it: nothing is saved, its user agrees to everything,
/// and it knows its tools and its password.
class ModelOnMac {
public:
    ModelOnMac();

    [[nodiscard]] AppModel &model() { return m_model; }

private:
    MemorySettings m_settings;
    SystemClock m_clock;
    Dialogs m_dialogs;
    User m_user{m_dialogs};
    std::unique_ptr<Workspace> m_workspace = systemWorkspace();
    std::unique_ptr<LoginItem> m_loginItem = systemLoginItem();
    AppModel m_model{Surroundings{m_settings, m_dialogs, *m_workspace, *m_loginItem, m_clock, QUrl()}};
};

} // namespace corvane::test
