#include "tests/ui/screen.h"
#include "tests/ui/states.h"
#include "ui/log/log_text_view.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QTest>

namespace corvane::test {

namespace {

/// The context menu of what can be read and copied.
class TextMenu : public Screen {
protected:
    void SetUp() override { QGuiApplication::clipboard()->setText(QStringLiteral("what was there before")); }

    void rightClick(const QString &name)
    {
        const QQuickItem *item = find(name);
        ASSERT_TRUE(item) << qPrintable(name);
        const QPointF spot = item->mapToScene(QPointF(10, item->height() / 2));
        QTest::mouseClick(window(), Qt::RightButton, {}, spot.toPoint());
        ASSERT_TRUE(QTest::qWaitFor([this] { return shows(QStringLiteral("menuCopy")); })) << qPrintable(name);
        QTest::qWait(30);
    }
    void choose(const char *item)
    {
        const QQuickItem *found = find(QString::fromLatin1(item));
        ASSERT_TRUE(found) << item;
        const QPointF spot = found->mapToScene(QPointF(found->width() / 2, found->height() / 2));
        QTest::mouseClick(window(), Qt::LeftButton, {}, spot.toPoint());
        EXPECT_TRUE(QTest::qWaitFor([this] { return !shows(QStringLiteral("menuCopy")); }));
    }
    [[nodiscard]] static QString copied() { return QGuiApplication::clipboard()->text(); }
};

TEST_F(TextMenu, Copies_a_whole_message)
{
    openDashboard();
    m_app.setNotice(QStringLiteral("Could not write the new compose file: disk full"));
    QTest::qWait(20);
    rightClick(QStringLiteral("noticeText"));
    picture(QStringLiteral("text-menu-light"));
    choose("menuCopy");
    EXPECT_EQ(copied(), QStringLiteral("Could not write the new compose file: disk full"));
}

TEST_F(TextMenu, Copies_what_is_selected)
{
    openDashboard();
    m_app.setNotice(QStringLiteral("Could not write"));
    QTest::qWait(20);
    QQuickItem *text = find(QStringLiteral("noticeText"));
    text->forceActiveFocus();
    QMetaObject::invokeMethod(text, "select", Q_ARG(int, 6), Q_ARG(int, 9));
    rightClick(QStringLiteral("noticeText"));
    choose("menuCopy");
    EXPECT_EQ(copied(), QStringLiteral("not"));
}

TEST_F(TextMenu, Selects_all)
{
    openDashboard();
    m_app.setNotice(QStringLiteral("Could not write"));
    QTest::qWait(20);
    rightClick(QStringLiteral("noticeText"));
    choose("menuSelectAll");
    EXPECT_EQ(find(QStringLiteral("noticeText"))->property("selectedText").toString(),
              QStringLiteral("Could not write"));
    EXPECT_EQ(copied(), QStringLiteral("what was there before"));
}

TEST_F(TextMenu, Of_a_log_copies_it_whole_or_what_is_selected)
{
    openDashboard();
    qobject_cast<LogTextView *>(find(QStringLiteral("piholeLogCanvas")))->setText(QStringLiteral("one\ntwo"));
    click(QStringLiteral("piholeLogCanvas"));
    rightClick(QStringLiteral("piholeLogCanvas"));
    choose("menuCopy");
    EXPECT_EQ(copied(), QStringLiteral("one\ntwo"));
    rightClick(QStringLiteral("piholeLogCanvas"));
    choose("menuSelectAll");
    EXPECT_EQ(find(QStringLiteral("piholeLogCanvas"))->property("selectedText").toString(), QStringLiteral("one\ntwo"));
}

TEST_F(TextMenu, Of_a_text_that_only_is_read_offers_no_change)
{
    openDashboard();
    m_app.setNotice(QStringLiteral("Could not write"));
    QTest::qWait(20);
    rightClick(QStringLiteral("noticeText"));
    EXPECT_FALSE(shows(QStringLiteral("menuCut")));
    EXPECT_FALSE(shows(QStringLiteral("menuPaste")));
    press(Qt::Key_Escape);
}

TEST_F(TextMenu, Of_a_field_cuts_and_pastes)
{
    openStep(3);
    m_app.setPasswordInput(QStringLiteral("correct-horse"));
    QQuickItem *field = find(QStringLiteral("passwordField"));
    field->forceActiveFocus();
    QMetaObject::invokeMethod(field, "select", Q_ARG(int, 0), Q_ARG(int, 8));
    rightClick(QStringLiteral("passwordField"));
    choose("menuCut");
    EXPECT_EQ(copied(), QStringLiteral("correct-"));
    EXPECT_EQ(field->property("text").toString(), QStringLiteral("horse"));
    rightClick(QStringLiteral("passwordField"));
    choose("menuPaste");
    EXPECT_TRUE(field->property("text").toString().contains(QStringLiteral("correct-")));
}

TEST_F(TextMenu, Is_opened_and_used_by_keyboard)
{
    openDashboard();
    m_app.setNotice(QStringLiteral("Could not write"));
    QTest::qWait(20);
    find(QStringLiteral("noticeText"))->forceActiveFocus(Qt::TabFocusReason);
    press(Qt::Key_Menu);
    ASSERT_TRUE(QTest::qWaitFor([this] { return shows(QStringLiteral("menuCopy")); }));
    press(Qt::Key_Down);
    press(Qt::Key_Return);
    EXPECT_TRUE(QTest::qWaitFor([this] { return !shows(QStringLiteral("menuCopy")); }));
    EXPECT_EQ(copied(), QStringLiteral("Could not write"));
    EXPECT_EQ(focused(), QStringLiteral("noticeText"));
}

TEST_F(TextMenu, Works_in_the_sheet_and_in_a_question)
{
    openDashboard();
    click(QStringLiteral("settingsButton"));
    m_app.setNotice(QStringLiteral("Something is in the way."));
    ASSERT_TRUE(QTest::qWaitFor([this] { return shows(QStringLiteral("closeSettingsButton")); }));
    const QCoro::Task<bool> asked = m_dialogs.confirm(
        {QStringLiteral("Remove?"), QStringLiteral("All of it."), QStringLiteral("Remove"), QStringLiteral("Cancel")});
    lookAt(m_windows.alert());
    ASSERT_TRUE(QTest::qWaitForWindowExposed(window()));
    rightClick(QStringLiteral("alertMessage"));
    choose("menuCopy");
    EXPECT_EQ(copied(), QStringLiteral("All of it."));
    m_dialogs.answer(false);
    lookAt(nullptr);
}

TEST_F(TextMenu, Results_are_reached_by_Tab)
{
    openDashboard();
    m_app.setNotice(QStringLiteral("a"));
    m_app.setStartMessage(QStringLiteral("b"));
    m_app.setApiMessage(QStringLiteral("c"));
    m_app.setUpdateMessage(QStringLiteral("d"));
    QTest::qWait(20);
    QSet<QString> reached;
    for (int i = 0; i < 60; ++i) {
        press(Qt::Key_Tab);
        reached << window()->activeFocusItem()->property("text").toString();
    }
    for (const char *text : {"a", "b", "c", "d"})
        EXPECT_TRUE(reached.contains(QString::fromLatin1(text))) << text;
}

TEST_F(TextMenu, The_detail_of_a_check_is_reached_by_Tab_and_copied)
{
    showChecks(m_app, false);
    const QString detail = m_app.systemChecks().at(1).detail;
    openStep(1);
    for (int i = 0; i < 60; ++i) {
        press(Qt::Key_Tab);
        if (window()->activeFocusItem()->property("text").toString() == detail) break;
    }
    press(Qt::Key_A, Qt::ControlModifier);
    press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(copied(), detail);
}

} // namespace

} // namespace corvane::test
