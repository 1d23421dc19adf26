#include "tests/flows/user.h"

#include <QMetaObject>

namespace corvane::test {

User::User(Dialogs &dialogs)
    : m_dialogs(dialogs)
{
    connect(&dialogs, &Dialogs::changed, this, &User::answer, Qt::QueuedConnection);
}

QStringList User::titles() const
{
    QStringList titles;
    for (const Alert &alert : m_alerts)
        titles.append(alert.title);
    return titles;
}

void User::answer()
{
    if (const auto act = std::exchange(m_before, {})) act();
    if (const std::optional<Alert> alert = m_dialogs.alert()) {
        m_alerts.append(*alert);
        m_dialogs.answer(m_agrees);
    } else if (const std::optional<FilePanel> panel = m_dialogs.panel()) {
        m_panels.append(*panel);
        m_dialogs.answer(m_agrees ? m_path : std::nullopt);
    }
}

} // namespace corvane::test
