#include "app/dialogs.h"

#include "app/completion.h"

namespace corvane {

/// A question and the flow that waits for its answer.
struct Dialogs::Turn {
    std::optional<Alert> alert;
    std::optional<FilePanel> panel;
    Completion<bool> accepted;
    Completion<std::optional<QString>> path;

    void cancel()
    {
        accepted.complete(false);
        path.complete(std::nullopt);
    }
};

Dialogs::Dialogs(QObject *parent)
    : QObject(parent)
{}

Dialogs::~Dialogs()
{
    const auto turns = std::exchange(m_turns, {});
    for (const auto &turn : turns)
        turn->cancel();
}

QCoro::Task<bool> Dialogs::confirm(Alert alert)
{
    const auto turn = std::make_shared<Turn>();
    turn->alert = std::move(alert);
    m_turns.push_back(turn);
    showNext();
    const bool accepted = co_await turn->accepted.wait();
    co_return accepted;
}

QCoro::Task<std::optional<QString>> Dialogs::choose(FilePanel panel)
{
    const auto turn = std::make_shared<Turn>();
    turn->panel = std::move(panel);
    m_turns.push_back(turn);
    showNext();
    const std::optional<QString> path = co_await turn->path.wait();
    co_return path;
}

void Dialogs::answer(bool accepted)
{
    if (!m_alert) return;
    const auto turn = m_turns.front();
    m_turns.erase(m_turns.begin());
    m_alert.reset();
    showNext();
    turn->accepted.complete(accepted);
}

void Dialogs::answer(const std::optional<QString> &path)
{
    if (!m_panel) return;
    const auto turn = m_turns.front();
    m_turns.erase(m_turns.begin());
    m_panel.reset();
    showNext();
    turn->path.complete(path);
}

void Dialogs::showNext()
{
    if (!busy() && !m_turns.empty()) {
        m_alert = m_turns.front()->alert;
        m_panel = m_turns.front()->panel;
    }
    Q_EMIT changed();
}

} // namespace corvane
