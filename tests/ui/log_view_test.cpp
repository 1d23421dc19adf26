#include "tests/ui/screen.h"
#include "tests/ui/states.h"
#include "ui/log_text_view.h"

#include <QAccessible>
#include <QClipboard>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QTest>

namespace corvane {

namespace {

/// The log of a running operation in the open window.
class LogView : public Screen {
protected:
    void openLog()
    {
        openStep(2);
        CommandStep step;
        step.label = QStringLiteral("a step");
        step.exe = QStringLiteral("/bin/true");
        m_app.installOp()->start(QStringLiteral("Installing"), {step});
        ASSERT_TRUE(QTest::qWaitFor([this] { return m_app.installOp()->ended(); }));
        click(QStringLiteral("installLogDetailsHeader"));
        m_log = qobject_cast<LogTextView *>(find(QStringLiteral("installLogLogCanvas")));
        ASSERT_TRUE(m_log);
        m_app.installOp()->reset();
        QTest::qWait(20);
    }
    void append(const QStringList &lines)
    {
        for (const QString &line : lines)
            m_app.installOp()->append(line);
    }

    LogTextView *m_log = nullptr;
};

TEST_F(LogView, Keeps_the_newest_line_in_sight_also_at_the_cap)
{
    openLog();
    append(logLines(100));
    EXPECT_NEAR(m_log->position() + m_log->pageSize(), 1, 0.01);
    m_log->scrollTo(0);
    EXPECT_EQ(m_log->position(), 0);
    append(logLines(1));
    EXPECT_NEAR(m_log->position() + m_log->pageSize(), 1, 0.01);
    append(logLines(4000));
    m_log->scrollTo(0);
    append(logLines(1));
    EXPECT_NEAR(m_log->position() + m_log->pageSize(), 1, 0.001);
}

TEST_F(LogView, Text_is_selected_across_lines_by_keyboard_and_copied)
{
    openLog();
    append({QStringLiteral("first line"), QStringLiteral("second line"), QStringLiteral("third")});
    m_log->forceActiveFocus();
    press(Qt::Key_Home, Qt::ControlModifier);
    press(Qt::Key_Right);
    press(Qt::Key_Down, Qt::ShiftModifier);
    press(Qt::Key_End, Qt::ShiftModifier);
    EXPECT_EQ(m_log->selectedText(), QStringLiteral("irst line\nsecond line"));
    press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("irst line\nsecond line"));
    press(Qt::Key_Up);
    EXPECT_EQ(QAccessible::queryAccessibleInterface(m_log)->text(QAccessible::Description),
              QStringLiteral("first line"));
    press(Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(m_log->selectedText(), QStringLiteral("first line\nsecond line\nthird"));
}

TEST_F(LogView, Text_is_selected_across_lines_by_mouse)
{
    openLog();
    append({QStringLiteral("first line"), QStringLiteral("second line")});
    m_log->forceActiveFocus();
    QTest::qWait(20);
    const QPoint from = m_log->mapToScene(QPointF(7, 12)).toPoint();
    const QPoint to = m_log->mapToScene(QPointF(400, 30)).toPoint();
    QTest::mousePress(window(), Qt::LeftButton, {}, from);
    QTest::mouseMove(window(), to);
    QTest::mouseRelease(window(), Qt::LeftButton, {}, to);
    EXPECT_EQ(m_log->selectedText(), QStringLiteral("first line\nsecond line"));
}

TEST_F(LogView, A_selection_stays_on_its_text_while_old_lines_go)
{
    openLog();
    append(logLines(3000));
    m_log->forceActiveFocus();
    press(Qt::Key_Home);
    press(Qt::Key_End, Qt::ShiftModifier);
    press(Qt::Key_End, Qt::ControlModifier);
    press(Qt::Key_Home, Qt::ShiftModifier);
    const QString selected = m_log->selectedText();
    EXPECT_FALSE(selected.isEmpty());
    append(logLines(500));
    EXPECT_EQ(m_log->selectedText(), selected);
}

TEST_F(LogView, A_line_of_5000_characters_wraps_and_stays_whole)
{
    openLog();
    const QString line(5000, u'x');
    append({line});
    EXPECT_LT(m_log->pageSize(), 1);
    m_log->selectAll();
    EXPECT_EQ(m_log->selectedText(), line);
}

TEST_F(LogView, Ten_thousand_lines_a_second_pass_without_a_hitch)
{
    openLog();
    QElapsedTimer total;
    qint64 longest = 0;
    total.start();
    const QStringList batch = logLines(160);
    for (int i = 0; i < 60; ++i) {
        QElapsedTimer one;
        one.start();
        append(batch);
        longest = std::max(longest, one.elapsed());
        QTest::qWait(1);
    }
    RecordProperty("longestBatch", static_cast<int>(longest));
    RecordProperty("total", static_cast<int>(total.elapsed()));
    EXPECT_LT(longest, 100);
    EXPECT_NEAR(m_log->position() + m_log->pageSize(), 1, 0.001);
}

} // namespace

} // namespace corvane
