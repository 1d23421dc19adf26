#pragma once

#include "app/app_state.h"

#include <algorithm>
#include <array>

namespace corvane {

/// The steps of the set-up, in their order. A new one takes its place here and in the table below.
class WizardStep : public QObject {
    Q_OBJECT

public:
    enum Name { Welcome, Checks, Install, Pihole, Blocking, DNS, Browser, Done };
    Q_ENUM(Name)
};

/// What is to be known about a step.
struct WizardStepRow {
    WizardStep::Name step;
    const char *title;
    /// How the file of its view begins, before "StepView.qml".
    const char *view;
    /// What proves the step; null when its test does.
    bool (*isProven)(const AppState &app) = nullptr;
    /// The key in `outcomes` of the test that belongs to the step; empty when it has none.
    const char *test = "";
    /// The test's name in the list of what was proven; %1 is the number of the step.
    const char *testTitle = "";
};

inline constexpr std::array kWizardSteps{
    WizardStepRow{WizardStep::Welcome, "Welcome", "Welcome",
                  [](const AppState &app) { return app.visited().contains(WizardStep::Welcome + 1); }},
    WizardStepRow{WizardStep::Checks, "Check this Mac", "Checks",
                  [](const AppState &app) {
                      const CheckRows rows = app.systemChecks();
                      return !rows.isEmpty() && std::ranges::count(rows, CheckState::Failed, &CheckRow::state) == 0;
                  }},
    WizardStepRow{WizardStep::Install, "Install Colima and Docker", "Install",
                  [](const AppState &app) { return app.dockerWorks(); }, "docker", "Docker engine"},
    WizardStepRow{WizardStep::Pihole, "Start Pi-hole", "Pihole", nullptr, "pihole",
                  "Pi-hole container, admin page and DNS (step %1)"},
    WizardStepRow{WizardStep::Blocking, "Test blocking", "Blocking", nullptr, "blocking", "Blocking (step %1)"},
    WizardStepRow{WizardStep::DNS, "Point this Mac at Pi-hole", "DNS", nullptr, "system",
                  "This Mac uses Pi-hole (step %1)"},
    WizardStepRow{WizardStep::Browser, "Check your browser", "Browser", nullptr, "browser", "Browser (step %1)"},
    WizardStepRow{WizardStep::Done, "Done", "Done", [](const AppState &app) { return app.setupSucceeded(); }},
};
inline constexpr int kStepCount = static_cast<int>(kWizardSteps.size());
inline constexpr int kLastStep = kStepCount - 1;

/// The number by which sentences name the step.
[[nodiscard]] constexpr int stepNumber(WizardStep::Name step) { return step + 1; }

/// Whether the step has been proven in this session.
[[nodiscard]] inline bool isProven(const WizardStepRow &step, const AppState &app)
{
    return step.isProven ? step.isProven(app) : passed(app.outcomes(), QString::fromLatin1(step.test));
}

[[nodiscard]] constexpr bool standInOrder()
{
    int place = 0;
    return std::ranges::all_of(kWizardSteps, [&place](const WizardStepRow &row) { return row.step == place++; });
}
static_assert(standInOrder(), "the table's rows have the order of the names");
static_assert(stepNumber(WizardStep::Install) == 3, "what is said of failures of Docker and Colima names this number");

} // namespace corvane
