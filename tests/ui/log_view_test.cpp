#include "tests/ui/screen.h"
#include "tests/ui/states.h"
#include "ui/log/log_text_view.h"

#include <QClipboard>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QTest>

namespace corvane::test {

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
        m_log->forceActiveFocus();
        QTest::qWait(20);
    }
    void openPiholeLog()
    {
        openDashboard();
        m_log = qobject_cast<LogTextView *>(find(QStringLiteral("piholeLogCanvas")));
        ASSERT_TRUE(m_log);
        m_log->forceActiveFocus();
        QTest::qWait(20);
    }
    /// What `docker logs` would have answered.
    void load(const QStringList &lines) { m_log->setText(lines.join(u'\n')); }
    [[nodiscard]] bool showsEnd() const { return m_log->position() + m_log->pageSize() > 0.999; }
    /// A point of the log, in the window.
    [[nodiscard]] QPoint at(double x, double y) const { return m_log->mapToScene(QPointF(x, y)).toPoint(); }
    void pressMouse(QPoint point) { QTest::mousePress(window(), Qt::LeftButton, {}, point); }
    void releaseMouse(QPoint point) { QTest::mouseRelease(window(), Qt::LeftButton, {}, point); }
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
    press(Qt::Key_Home, Qt::ControlModifier);
    press(Qt::Key_Right);
    press(Qt::Key_Down, Qt::ShiftModifier);
    press(Qt::Key_End, Qt::ShiftModifier);
    EXPECT_EQ(m_log->selectedText(), QStringLiteral("irst line\nsecond line"));
    press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("irst line\nsecond line"));
    press(Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(m_log->selectedText(), QStringLiteral("first line\nsecond line\nthird"));
}

TEST_F(LogView, Text_is_selected_across_lines_by_mouse)
{
    openLog();
    append({QStringLiteral("first line"), QStringLiteral("second line")});
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
    press(Qt::Key_Home);
    press(Qt::Key_End, Qt::ShiftModifier);
    press(Qt::Key_End, Qt::ControlModifier);
    press(Qt::Key_Home, Qt::ShiftModifier);
    const QString selected = m_log->selectedText();
    EXPECT_FALSE(selected.isEmpty());
    append(logLines(500));
    EXPECT_EQ(m_log->selectedText(), selected);
}

TEST_F(LogView, Another_text_of_as_many_lines_leaves_the_reader_where_he_reads)
{
    openPiholeLog();
    QStringList lines = logLines(300);
    load(lines);
    EXPECT_TRUE(showsEnd());
    m_log->scrollTo(0.5);
    const double place = m_log->position();
    m_log->select({150, 0}, {150, 5});
    const QString selected = m_log->selectedText();
    lines.last() += QStringLiteral(" and more");
    load(lines);
    EXPECT_EQ(m_log->position(), place);
    EXPECT_EQ(m_log->selectedText(), selected);
    lines[150] = QStringLiteral("other");
    load(lines);
    EXPECT_EQ(m_log->position(), place);
    EXPECT_EQ(m_log->selectedText(), QString());
    lines << QStringLiteral("one more");
    load(lines);
    EXPECT_TRUE(showsEnd());
}

TEST_F(LogView, Dragging_beyond_an_edge_scrolls_on_and_selects_on)
{
    openPiholeLog();
    load(logLines(300));
    const QPoint start = at(60, 100);
    const QPoint above = at(60, -40);
    pressMouse(start);
    QTest::mouseMove(window(), above);
    EXPECT_TRUE(QTest::qWaitFor([this] { return m_log->position() == 0; }, 20'000));
    releaseMouse(above);
    EXPECT_GT(m_log->selectedText().count(u'\n'), 250);
    pressMouse(start);
    QTest::mouseMove(window(), at(60, m_log->height() + 60));
    EXPECT_TRUE(QTest::qWaitFor([this] { return showsEnd(); }, 20'000));
    releaseMouse(at(60, m_log->height() + 60));
    const double place = m_log->position();
    m_log->scrollTo(0.5);
    QTest::qWait(100);
    EXPECT_LT(m_log->position(), place);
}

TEST_F(LogView, Text_stands_still_under_the_mouse_that_selects_it)
{
    openLog();
    append(logLines(3000));
    const QPoint point = at(30, 60);
    pressMouse(point);
    QTest::mouseMove(window(), at(200, 60));
    const QString selected = m_log->selectedText();
    EXPECT_FALSE(selected.isEmpty());
    append(logLines(40));
    EXPECT_FALSE(showsEnd());
    QTest::mouseMove(window(), at(203, 60));
    QTest::mouseMove(window(), at(200, 60));
    EXPECT_EQ(m_log->selectedText(), selected);
    releaseMouse(at(200, 60));
    EXPECT_EQ(m_log->selectedText(), selected);
    EXPECT_TRUE(showsEnd());
}

TEST_F(LogView, Two_clicks_select_a_word_three_a_line_and_a_shifted_one_up_to_there)
{
    openLog();
    append({QStringLiteral("first line of all"), QStringLiteral("second")});
    QTest::qWait(20);
    const QPoint point = at(8 + 8 * 7, 14);
    pressMouse(point);
    releaseMouse(point);
    QTest::mouseDClick(window(), Qt::LeftButton, {}, point);
    EXPECT_EQ(m_log->selectedText(), QStringLiteral("line"));
    QTest::mouseClick(window(), Qt::LeftButton, {}, point);
    EXPECT_EQ(m_log->selectedText(), QStringLiteral("first line of all\n"));
    QTest::qWait(600);
    QTest::mouseClick(window(), Qt::LeftButton, {}, at(7, 14));
    QTest::mouseClick(window(), Qt::LeftButton, Qt::ShiftModifier, at(400, 14));
    EXPECT_EQ(m_log->selectedText(), QStringLiteral("first line of all"));
}

TEST_F(LogView, Pages_scroll_and_with_shift_select)
{
    openPiholeLog();
    load(logLines(300));
    press(Qt::Key_PageUp);
    EXPECT_FALSE(showsEnd());
    EXPECT_EQ(m_log->selectedText(), QString());
    press(Qt::Key_PageDown);
    EXPECT_TRUE(showsEnd());
    press(Qt::Key_PageUp, Qt::ShiftModifier);
    const auto lines = m_log->selectedText().count(u'\n');
    EXPECT_GT(lines, 5);
    press(Qt::Key_PageUp, Qt::ShiftModifier);
    EXPECT_EQ(m_log->selectedText().count(u'\n'), 2 * lines);
    press(Qt::Key_PageDown, Qt::ShiftModifier);
    EXPECT_EQ(m_log->selectedText().count(u'\n'), lines);
}

TEST_F(LogView, The_caret_waits_at_the_newest_line)
{
    openLog();
    append(logLines(100));
    append(logLines(20));
    press(Qt::Key_Up);
    EXPECT_TRUE(showsEnd());
    EXPECT_EQ(m_log->caret().line, 118);
    append(logLines(1));
    EXPECT_EQ(m_log->caret().line, 118);
}

TEST_F(LogView, A_selection_is_seen_in_light_and_dark)
{
    openPiholeLog();
    m_log->setText(logLines(300).join(u'\n'));
    for (const bool dark : {false, true}) {
        setDark(dark);
        const QString name = dark ? QStringLiteral("log-dark") : QStringLiteral("log");
        const QPoint inText = at(8, m_log->height() - 14);
        m_log->select(m_log->caret(), m_log->caret());
        const QColor before = picture(name).pixelColor(inText);
        m_log->selectAll();
        const QColor selected = picture(name + QStringLiteral("-selected")).pixelColor(inText);
        EXPECT_NE(before, selected);
    }
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

} // namespace corvane::test
