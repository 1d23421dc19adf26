#include "ui/file_panels.h"

#include <QStandardPaths>

namespace corvane {

FilePanels::FilePanels(Dialogs &dialogs)
    : m_dialogs(dialogs)
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
    m_dialog->setDirectory(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation));
    if (!panel.suffix.isEmpty()) {
        m_dialog->setNameFilter(QStringLiteral("%1 (*.%2)").arg(panel.suffix.toUpper(), panel.suffix));
        m_dialog->setDefaultSuffix(panel.suffix);
    }
    if (!panel.proposedName.isEmpty()) m_dialog->selectFile(panel.proposedName);
    connect(m_dialog.get(), &QDialog::finished, this, &FilePanels::onFinished);
    m_dialog->open();
}

void FilePanels::onFinished(int result)
{
    const QStringList files = m_dialog->selectedFiles();
    const bool chosen = result == QDialog::Accepted && !files.isEmpty();
    m_dialog.release()->deleteLater();
    m_dialogs.answer(chosen ? std::optional(files.first()) : std::nullopt);
}

} // namespace corvane
