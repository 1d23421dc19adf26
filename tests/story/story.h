#pragma once

#include "app/app_model.h"

#include <QString>

#include <functional>

namespace corvane::test {

/// The flows from a Mac with Homebrew alone to a protected one and back, in the order in which the wizard calls them.
class Story {
public:
    struct Step {
        /// What happens, for a reader.
        QString text;
        std::function<void()> act;
        /// What is wrong afterwards; empty when nothing is.
        std::function<QString()> problem;
    };

    explicit Story(AppModel &model);

    [[nodiscard]] const QList<Step> &steps() const { return m_steps; }

    /// Lets the event loop run until no flow and no operation is under way; false after two minutes. Between two
    /// operations a flow may look at rest: `done` is then given another five seconds to hold.
    static bool settle(AppModel &model, const std::function<bool()> &done = {});

private:
    void add(const QString &text, std::function<void()> act, std::function<QString()> problem);
    void addChecks();
    void addInstallation();
    void addPihole();
    void addDns();
    void addReturn();

    AppModel &m_model;
    QList<Step> m_steps;
};

} // namespace corvane::test
