#pragma once

#include "app/dialogs.h"

#include <QHash>
#include <QObject>
#include <QStringList>

#include <functional>

namespace corvane::test {

/// Answers every question as it was told, from the event loop like a person, and remembers what was asked.
class User : public QObject {
public:
    explicit User(Dialogs &dialogs);

    /// Presses the first button of every alert from now on.
    void agrees() { m_agrees = true; }
    /// Presses "Cancel" from now on, also in panels.
    void cancels() { m_agrees = false; }
    /// Picks this file in every panel from now on.
    void picks(const QString &path) { m_path = path; }
    /// Does this once, just before the next answer.
    void beforeAnswering(std::function<void()> act) { m_before = std::move(act); }

    [[nodiscard]] const QList<Alert> &alerts() const { return m_alerts; }
    [[nodiscard]] const QList<FilePanel> &panels() const { return m_panels; }
    [[nodiscard]] QStringList titles() const;

private:
    void answer();

    Dialogs &m_dialogs;
    bool m_agrees = true;
    std::optional<QString> m_path;
    std::function<void()> m_before;
    QList<Alert> m_alerts;
    QList<FilePanel> m_panels;
};

} // namespace corvane::test
