#pragma once

#include "ui/windows.h"

#include <QFileDialog>
#include <QObject>

#include <memory>

namespace corvane {

/// Shows the file panels that flows ask for, and answers them.
class FilePanels : public QObject {
    Q_OBJECT

public:
    /// The panels are sheets of the main window.
    FilePanels(Dialogs &dialogs, Windows &windows);
    ~FilePanels() override;

private:
    void follow();
    void open(const FilePanel &panel);
    void hangOn();
    void onFinished(int result);

    Dialogs &m_dialogs;
    Windows &m_windows;
    /// Where the last file was chosen in this session.
    QString m_folder;
    std::unique_ptr<QFileDialog> m_dialog;
};

} // namespace corvane
