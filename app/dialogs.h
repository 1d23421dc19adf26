#pragma once

#include <QCoro/QCoroTask>
#include <QObject>
#include <QString>

#include <memory>
#include <optional>

namespace corvane {

template <class T>
class Completion;

/// A question with two answers.
struct Alert {
    /// A warning is about something that cannot be taken back: its answer without effect is the default one.
    enum class Style { Informational, Warning };

    QString title;
    QString text;
    /// The first button.
    QString accept;
    QString reject;
    Style style = Style::Informational;

    bool operator==(const Alert &) const = default;
};

/// A panel in which the user picks a file.
struct FilePanel {
    enum class Purpose { Save, Open };

    Purpose purpose = Purpose::Save;
    /// The file name that a save panel proposes.
    QString proposedName = {};
    /// The one file type on offer, as a suffix such as "zip"; empty for any.
    QString suffix = {};

    bool operator==(const FilePanel &) const = default;
};

/// The questions that flows ask and the user answers.
///
/// A question is published state: the view that shows it reads `alert` or `panel` and answers it once. One question is
/// open at a time; others wait their turn.
class Dialogs : public QObject {
    Q_OBJECT

public:
    explicit Dialogs(QObject *parent = nullptr);
    ~Dialogs() override;

    /// True when the user chose the first button.
    [[nodiscard]] QCoro::Task<bool> confirm(Alert alert);
    /// The path the user chose; absent when the user cancelled.
    [[nodiscard]] QCoro::Task<std::optional<QString>> choose(FilePanel panel);

    /// The question now open, if any.
    [[nodiscard]] const std::optional<Alert> &alert() const { return m_alert; }
    [[nodiscard]] const std::optional<FilePanel> &panel() const { return m_panel; }

    /// Answers the open alert; ignored when none is open.
    void answer(bool accepted);
    /// Answers the open panel; ignored when none is open.
    void answer(const std::optional<QString> &path);

Q_SIGNALS:
    /// An alert or a panel was opened or answered.
    void changed();

private:
    struct Turn;

    [[nodiscard]] bool busy() const { return m_alert || m_panel; }
    void showNext();

    std::optional<Alert> m_alert;
    std::optional<FilePanel> m_panel;
    std::vector<std::shared_ptr<Turn>> m_turns;
};

} // namespace corvane
