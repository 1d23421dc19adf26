#include "ui/file_panels.h"

#include <QFileInfo>
#include <QStandardPaths>
#include <QWindow>

namespace corvane {

FilePanels::FilePanels(Dialogs &dialogs, Windows &windows)
    : m_dialogs(dialogs)
    , m_windows(windows)
    , m_folder(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation))
{
    connect(&dialogs, &Dialogs::changed, this, &FilePanels::follow);
}

FilePanels::~FilePanels() = default;

void FilePanels::follow()
{
    if (m_dialogs.panel() && !m_dialog) open(*m_dialogs.panel());
}

void FilePanels::open(const FilePanel &panel)
{
    const bool saves = panel.purpose == FilePanel::Purpose::Save;
    m_dialog = std::make_unique<QFileDialog>();
    m_dialog->setObjectName(QStringLiteral("filePanel"));
    m_dialog->setAcceptMode(saves ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    m_dialog->setFileMode(saves ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
    m_dialog->setDirectory(m_folder);
    if (!panel.suffix.isEmpty()) {
        m_dialog->setNameFilter(QStringLiteral("%1 (*.%2)").arg(panel.suffix.toUpper(), panel.suffix));
        m_dialog->setDefaultSuffix(panel.suffix);
    }
    if (!panel.proposedName.isEmpty()) m_dialog->selectFile(panel.proposedName);
    connect(m_dialog.get(), &QDialog::finished, this, &FilePanels::onFinished);
    hangOn();
    m_dialog->open();
}

// A panel without an event loop of its own holds up the window that it hangs on, and no other.
void FilePanels::hangOn()
{
    if (!m_windows.main()) m_windows.openMain();
    m_dialog->winId(); // makes its window
    m_dialog->windowHandle()->setTransientParent(m_windows.main());
}

void FilePanels::onFinished(int result)
{
    const QStringList files = m_dialog->selectedFiles();
    const bool chosen = result == QDialog::Accepted && !files.isEmpty();
    if (chosen) m_folder = QFileInfo(files.first()).absolutePath();
    m_dialog.release()->deleteLater();
    m_dialogs.answer(chosen ? std::optional(files.first()) : std::nullopt);
}

} // namespace corvane
