#include "tests/ui/screen.h"

#include <QApplication>
#include <QFileDialog>
#include <QTemporaryDir>
#include <QTest>
#include <QWindow>

namespace corvane::test {

namespace {

class FilePanelView : public Screen {
protected:
    void ask(const FilePanel &panel)
    {
        m_answered = false;
        const QCoro::Task<> noting = note(this, m_dialogs.choose(panel));
    }

    [[nodiscard]] static QFileDialog *shownPanel()
    {
        for (QWidget *widget : QApplication::topLevelWidgets()) {
            auto *panel = qobject_cast<QFileDialog *>(widget);
            if (panel && panel->isVisible()) return panel;
        }
        return nullptr;
    }

    bool m_answered = false;
    std::optional<QString> m_path;

private:
    static QCoro::Task<> note(FilePanelView *self, QCoro::Task<std::optional<QString>> asked)
    {
        const std::optional<QString> path = co_await asked;
        self->m_path = path;
        self->m_answered = true;
    }
};

TEST_F(FilePanelView, A_save_panel_proposes_a_name_and_answers_with_the_path)
{
    const QTemporaryDir folder;
    FilePanel panel;
    panel.proposedName = QStringLiteral("pihole-log.txt");
    ask(panel);
    QFileDialog *shown = shownPanel();
    ASSERT_TRUE(shown);
    EXPECT_EQ(shown->acceptMode(), QFileDialog::AcceptSave);
    EXPECT_TRUE(shown->selectedFiles().first().endsWith(QStringLiteral("/pihole-log.txt")));
    shown->setDirectory(folder.path());
    shown->selectFile(folder.filePath(QStringLiteral("other.txt")));
    QMetaObject::invokeMethod(shown, "accept");
    ASSERT_TRUE(QTest::qWaitFor([this] { return m_answered; }));
    EXPECT_EQ(m_path, folder.filePath(QStringLiteral("other.txt")));
    EXPECT_FALSE(shownPanel());
}

TEST_F(FilePanelView, An_open_panel_offers_only_its_file_type)
{
    FilePanel panel;
    panel.purpose = FilePanel::Purpose::Open;
    panel.suffix = QStringLiteral("zip");
    ask(panel);
    QFileDialog *shown = shownPanel();
    ASSERT_TRUE(shown);
    EXPECT_EQ(shown->nameFilters(), QStringList{QStringLiteral("ZIP (*.zip)")});
    EXPECT_EQ(shown->fileMode(), QFileDialog::ExistingFile);
    QMetaObject::invokeMethod(shown, "reject");
    ASSERT_TRUE(QTest::qWaitFor([this] { return m_answered; }));
    EXPECT_FALSE(m_path);
}

TEST_F(FilePanelView, An_open_panel_holds_up_every_window)
{
    openDashboard();
    m_windows.openSettings();
    ask(FilePanel());
    ASSERT_TRUE(shownPanel());
    EXPECT_EQ(shownPanel()->windowHandle()->transientParent(), m_windows.main());
    EXPECT_EQ(shownPanel()->windowModality(), Qt::WindowModal);
    click(QStringLiteral("settingsButton"));
    EXPECT_FALSE(shows(QStringLiteral("closeSettingsButton"))) << "the main window takes no click";
    EXPECT_FALSE(m_windows.settings()->contentItem()->isEnabled());
    QMetaObject::invokeMethod(shownPanel(), "reject");
    ASSERT_TRUE(QTest::qWaitFor([this] { return m_answered; }));
    EXPECT_TRUE(m_windows.settings()->contentItem()->isEnabled());
    click(QStringLiteral("settingsButton"));
    EXPECT_TRUE(QTest::qWaitFor([this] { return shows(QStringLiteral("closeSettingsButton")); }));
}

TEST_F(FilePanelView, Brings_Corvane_to_the_front_before_it_opens)
{
    openDashboard();
    m_workspace.activations = 0;
    m_workspace.onActivate = [] { EXPECT_FALSE(shownPanel()); };
    ask(FilePanel());
    EXPECT_EQ(m_workspace.activations, 1);
    EXPECT_TRUE(shownPanel());
    QMetaObject::invokeMethod(shownPanel(), "reject");
    ASSERT_TRUE(QTest::qWaitFor([this] { return m_answered; }));
    m_workspace.onActivate = {};
}

TEST_F(FilePanelView, Opens_where_the_last_file_was)
{
    const QTemporaryDir folder;
    openDashboard();
    ask(FilePanel());
    ASSERT_TRUE(shownPanel());
    EXPECT_NE(shownPanel()->directory().absolutePath(), folder.path());
    shownPanel()->setDirectory(folder.path());
    shownPanel()->selectFile(folder.filePath(QStringLiteral("log.txt")));
    QMetaObject::invokeMethod(shownPanel(), "accept");
    ASSERT_TRUE(QTest::qWaitFor([this] { return m_answered; }));
    ask(FilePanel());
    ASSERT_TRUE(shownPanel());
    EXPECT_EQ(shownPanel()->directory().absolutePath(), folder.path());
    QMetaObject::invokeMethod(shownPanel(), "reject");
    ASSERT_TRUE(QTest::qWaitFor([this] { return m_answered; }));
}

TEST_F(FilePanelView, The_screens_stay_alive_beside_an_open_panel)
{
    openDashboard();
    ask(FilePanel());
    ASSERT_TRUE(shownPanel());
    m_app.setApiMessage(QStringLiteral("Something has changed."));
    EXPECT_EQ(textOf(QStringLiteral("apiMessage")), QStringLiteral("Something has changed."));
    EXPECT_FALSE(m_answered);
    QMetaObject::invokeMethod(shownPanel(), "reject");
    ASSERT_TRUE(QTest::qWaitFor([this] { return m_answered; }));
}

} // namespace

} // namespace corvane::test
