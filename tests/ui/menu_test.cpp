#include "tests/ui/screen.h"
#include "tests/ui/states.h"
#include "ui/decisions/dashboard_texts.h"
#include "ui/menu_content.h"

#include <QTest>

namespace corvane::test {

namespace {

/// One menu that lives as long as the program does.
class Menu : public Screen {
protected:
    [[nodiscard]] QString text(int item) const { return m_menu.actions().at(item)->text(); }
    [[nodiscard]] bool canChoose(int item) const { return m_menu.actions().at(item)->isEnabled(); }
    void choose(int item) { m_menu.actions().at(item)->trigger(); }
    [[nodiscard]] QStringList texts() const
    {
        QStringList texts;
        for (const QAction *action : m_menu.actions())
            if (action->isVisible()) texts << (action->isSeparator() ? QStringLiteral("---") : action->text());
        return texts;
    }

    enum Item { Status = 0, Pause = 3, StartStop = 4, OpenWindow = 6, Quit = 7, PauseFor = 9 };

    int m_opened = 0;
    int m_quit = 0;
    MenuContent m_menu{m_app, m_looks, m_commands, {[this] { ++m_opened; }, [this] { ++m_quit; }}};
};

TEST_F(Menu, Has_the_status_and_the_everyday_actions)
{
    const QStringList shown = texts();
    ASSERT_EQ(shown.size(), PauseFor + 1);
    for (int item = Status; item <= PauseFor; ++item) {
        const bool separates = item == 1 || item == 5 || item == 8;
        EXPECT_EQ(shown.at(item) == QStringLiteral("---"), separates) << item << ": " << shown.at(item).toStdString();
        EXPECT_FALSE(shown.at(item).isEmpty()) << item;
    }
    EXPECT_EQ(text(Status), m_app.statusLine());
    EXPECT_EQ(text(Pause), m_looks.pauseLabel());
    EXPECT_EQ(text(StartStop), startStopLabel(m_app.containerState()));
    EXPECT_FALSE(canChoose(Status));
}

TEST_F(Menu, Follows_blocking)
{
    showPaused(m_app, 60);
    EXPECT_EQ(text(Status), m_app.statusLine());
    EXPECT_EQ(text(Pause), m_looks.pauseLabel());
    const QString resume = text(Pause);
    m_app.setBlocking(PiholeBlocking{true, std::nullopt});
    EXPECT_EQ(text(Pause), m_looks.pauseLabel());
    EXPECT_NE(text(Pause), resume);
}

TEST_F(Menu, Counts_a_pause_down_beneath_while_it_is_open)
{
    const QString offer = texts().at(PauseFor);
    showPaused(m_app, 298.5);
    EXPECT_TRUE(texts().at(PauseFor).contains(QStringLiteral("4:59"))) << texts().at(PauseFor).toStdString();
    m_app.setBlocking(PiholeBlocking{true, std::nullopt});
    EXPECT_EQ(texts().at(PauseFor), offer);
}

TEST_F(Menu, Offers_every_length_of_a_pause)
{
    showRunning(m_app);
    QStringList lengths;
    for (const QAction *length : m_menu.actions().last()->menu()->actions())
        lengths << length->text();
    EXPECT_EQ(lengths, (QStringList{QStringLiteral("30 seconds"), QStringLiteral("5 minutes"), QStringLiteral("1 hour"),
                                    QStringLiteral("Until tomorrow morning")}));
    m_menu.actions().last()->menu()->actions().first()->trigger();
    QTRY_COMPARE(m_opened, 1); // nothing answers here, and the window says so
    EXPECT_TRUE(m_app.apiMessage().startsWith(QStringLiteral("Could not pause blocking: ")));
}

TEST_F(Menu, Follows_the_container_when_nothing_else_changes)
{
    showStopped(m_app);
    m_app.setContainerState(ContainerState::running(QStringLiteral("starting")));
    const QString whileRunning = text(StartStop);
    EXPECT_EQ(whileRunning, startStopLabel(m_app.containerState()));
    m_app.setContainerState(ContainerState::stopped(QStringLiteral("exited")));
    EXPECT_EQ(text(StartStop), startStopLabel(m_app.containerState()));
    EXPECT_NE(text(StartStop), whileRunning);
}

TEST_F(Menu, Follows_the_status_line_when_nothing_else_changes)
{
    showRunning(m_app);
    m_app.setUsedByMac(false);
    EXPECT_EQ(text(Status), m_app.statusLine());
    m_app.setUsedByMac(true);
    EXPECT_EQ(text(Status), m_app.statusLine());
}

TEST_F(Menu, Keeps_its_items_in_place_while_it_is_open)
{
    const QList<QAction *> items = m_menu.actions();
    const QString offer = text(Pause);
    Q_EMIT m_menu.aboutToShow(); // as a menu that the system draws announces that it opens
    showPaused(m_app, 60);
    EXPECT_EQ(m_menu.actions(), items);
    EXPECT_NE(text(Pause), offer);
    EXPECT_EQ(text(Pause), m_looks.pauseLabel());
    EXPECT_EQ(text(StartStop), startStopLabel(m_app.containerState()));
    Q_EMIT m_menu.aboutToHide();
    Q_EMIT m_menu.aboutToShow();
    EXPECT_EQ(m_menu.actions(), items);
}

TEST_F(Menu, What_cannot_be_done_now_is_dimmed)
{
    showRunning(m_app);
    EXPECT_TRUE(canChoose(StartStop));
    {
        const SleepingOperation updating(*m_app.maintOp());
        EXPECT_FALSE(canChoose(StartStop));
        EXPECT_TRUE(canChoose(Pause));
    }
    EXPECT_TRUE(canChoose(StartStop));
    m_app.setBusy({QStringLiteral("container")});
    EXPECT_FALSE(canChoose(StartStop));
    m_app.setBusy({});
    EXPECT_TRUE(canChoose(StartStop));
}

TEST_F(Menu, Opens_the_window_and_quits)
{
    choose(OpenWindow);
    EXPECT_EQ(m_opened, 1);
    choose(Quit);
    EXPECT_EQ(m_quit, 1);
}

TEST_F(Menu, A_pause_that_fails_is_told_in_the_window)
{
    m_app.setShowWizard(true);
    showRunning(m_app);
    m_app.setAdminPassword({});
    choose(Pause);
    EXPECT_TRUE(QTest::qWaitFor([this] { return m_opened == 1; }));
    EXPECT_FALSE(m_app.showWizard());
    EXPECT_FALSE(m_app.apiMessage().isEmpty());
}

TEST_F(Menu, A_start_that_fails_is_told_in_the_window)
{
    m_app.setShowWizard(true);
    showStopped(m_app);
    choose(StartStop);
    EXPECT_TRUE(QTest::qWaitFor([this] { return m_opened == 1; }, 20'000));
    EXPECT_FALSE(m_app.showWizard());
    EXPECT_FALSE(m_app.notice().isEmpty());
}

} // namespace

} // namespace corvane::test
