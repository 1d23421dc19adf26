#pragma once

#include "app/dialogs.h"

#include <QFileDialog>
#include <QObject>

#include <memory>

namespace corvane {

/// Shows the file panels that flows ask for, and answers them.
class FilePanels : public QObject {
    Q_OBJECT

public:
    explicit FilePanels(Dialogs &dialogs);
    ~FilePanels() override;

private:
    void follow();
    void open(const FilePanel &panel);
    void onFinished(int result);

    Dialogs &m_dialogs;
    std::unique_ptr<QFileDialog> m_dialog;
};

} // namespace corvane
