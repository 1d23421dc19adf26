#pragma once

#include "app/app_model.h"
#include "platform/announcer.h"
#include "ui/commands.h"

#include <QTimer>

namespace corvane {

/// Tells a screen reader once what appears on the screens by itself: notices, the banner, messages, questions, verdicts
/// and how an operation ended.
class Announcements : public QObject {
    Q_OBJECT

public:
    Announcements(AppModel &app, Dialogs &dialogs, Commands &commands, Announcer &announcer);

private:
    void followMessages();
    void followTests();
    void followQuestions();
    void followOperation(OperationRunner *runner);
    void say(const QString &sentence);
    void sayOutcomes();
    void sayChecks();
    void speak();

    AppModel &m_app;
    Dialogs &m_dialogs;
    Announcer &m_announcer;
    Outcomes m_outcomes;
    std::optional<Alert> m_question;
    bool m_checking = false;
    QString m_lists;
    /// What came in one burst is said in one breath, each sentence once.
    QStringList m_sentences;
    QString m_place;
    QTimer m_burst;
};

} // namespace corvane
