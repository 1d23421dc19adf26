#include "tests/ui/screen.h"
#include "tests/ui/states.h"
#include "ui/log/log_text_view.h"

#include <QAccessible>
#include <QTest>
#include <qpa/qplatformaccessibility.h>
#include <qpa/qplatformintegration.h>

#include <private/qguiapplication_p.h>

namespace corvane::test {

namespace {

/// What a screen reader was told.
struct Told {
    QAccessible::Event type;
    int offset;
    QString text;
};

QList<Told> told;
QAccessible::UpdateHandler forward = nullptr;

void note(QAccessibleEvent *event)
{
    if (event->type() == QAccessible::TextInserted) {
        const auto *insert = static_cast<QAccessibleTextInsertEvent *>(event);
        told << Told{event->type(), insert->changePosition(), insert->textInserted()};
    } else if (event->type() == QAccessible::TextRemoved) {
        const auto *removal = static_cast<QAccessibleTextRemoveEvent *>(event);
        told << Told{event->type(), removal->changePosition(), removal->textRemoved()};
    } else if (event->type() == QAccessible::TextCaretMoved) {
        told << Told{event->type(), static_cast<QAccessibleTextCursorEvent *>(event)->cursorPosition(), {}};
    }
    if (forward) forward(event);
}

/// Without a desktop, nobody but us says that a screen reader listens.
void listen(bool on) { QGuiApplicationPrivate::platformIntegration()->accessibility()->setActive(on); }

/// The dashboard's log as a screen reader meets it.
class LogSpeech : public Screen {
protected:
    LogSpeech()
    {
        told.clear();
        listen(true);
        forward = QAccessible::installUpdateHandler(note);
    }
    ~LogSpeech() override
    {
        QAccessible::installUpdateHandler(forward);
        listen(false);
    }

    void openLog(const QStringList &lines)
    {
        openDashboard();
        m_log = qobject_cast<LogTextView *>(find(QStringLiteral("piholeLogCanvas")));
        ASSERT_TRUE(m_log);
        m_log->setText(lines.join(u'\n'));
        m_log->forceActiveFocus();
        QTest::qWait(20);
        m_spoken = QAccessible::queryAccessibleInterface(m_log);
        ASSERT_TRUE(m_spoken);
        m_text = m_spoken->textInterface();
        ASSERT_TRUE(m_text);
        told.clear();
    }
    [[nodiscard]] QString at(int offset, QAccessible::TextBoundaryType boundary) const
    {
        int start = 0;
        int end = 0;
        const QString text = m_text->textAtOffset(offset, boundary, &start, &end);
        EXPECT_EQ(text, m_text->text(start, end));
        EXPECT_LE(start, offset);
        return text;
    }
    [[nodiscard]] QStringList toldOf(QAccessible::Event type) const
    {
        QStringList texts;
        for (const Told &one : told) {
            if (one.type == type) texts << QStringLiteral("%1:%2").arg(one.offset).arg(one.text);
        }
        return texts;
    }

    LogTextView *m_log = nullptr;
    QAccessibleInterface *m_spoken = nullptr;
    QAccessibleTextInterface *m_text = nullptr;
};

const QStringList kLines{QStringLiteral("first line"), QStringLiteral("second line"), QStringLiteral("third")};

TEST_F(LogSpeech, The_log_is_a_named_text_of_many_lines_that_cannot_be_edited)
{
    openLog(kLines);
    EXPECT_EQ(m_spoken->text(QAccessible::Name), QStringLiteral("Log of the Pi-hole container"));
    EXPECT_EQ(m_spoken->role(), QAccessible::EditableText);
    const QAccessible::State state = m_spoken->state();
    EXPECT_TRUE(state.readOnly && state.multiLine && state.selectableText && state.focusable && state.focused);
    EXPECT_FALSE(state.invisible || state.disabled || state.offscreen);
    EXPECT_EQ(m_spoken->editableTextInterface(), nullptr);
    EXPECT_EQ(m_spoken->rect().size(), m_log->size().toSize());
    ASSERT_TRUE(m_spoken->parent());
    EXPECT_GE(m_spoken->parent()->indexOfChild(m_spoken), 0);
    window()->hide();
    EXPECT_TRUE(m_spoken->state().invisible);
}

TEST_F(LogSpeech, It_is_read_by_sign_word_and_line)
{
    openLog(kLines);
    EXPECT_EQ(m_text->characterCount(), kLines.join(u'\n').size());
    EXPECT_EQ(m_text->text(0, m_text->characterCount()), kLines.join(u'\n'));
    EXPECT_EQ(m_text->text(6, 17), QStringLiteral("line\nsecond"));
    EXPECT_EQ(at(12, QAccessible::CharBoundary), QStringLiteral("e"));
    EXPECT_EQ(at(10, QAccessible::CharBoundary), QStringLiteral("\n"));
    EXPECT_EQ(at(12, QAccessible::WordBoundary), QStringLiteral("second"));
    EXPECT_EQ(at(12, QAccessible::LineBoundary), QStringLiteral("second line\n"));
    EXPECT_EQ(at(10, QAccessible::LineBoundary), QStringLiteral("first line\n"));
    EXPECT_EQ(at(28, QAccessible::ParagraphBoundary), QStringLiteral("third"));
    EXPECT_EQ(at(3, QAccessible::NoBoundary), kLines.join(u'\n'));
    int start = 0;
    int end = 0;
    EXPECT_EQ(m_text->textBeforeOffset(12, QAccessible::LineBoundary, &start, &end), QStringLiteral("first line\n"));
    EXPECT_EQ(m_text->textAfterOffset(12, QAccessible::LineBoundary, &start, &end), QStringLiteral("third"));
    EXPECT_EQ(m_text->textBeforeOffset(2, QAccessible::LineBoundary, &start, &end), QString());
    EXPECT_EQ(m_text->textAfterOffset(28, QAccessible::LineBoundary, &start, &end), QString());
}

TEST_F(LogSpeech, An_empty_log_is_read_as_nothing)
{
    openLog({});
    EXPECT_EQ(m_text->characterCount(), 0);
    EXPECT_EQ(at(0, QAccessible::LineBoundary), QString());
    EXPECT_EQ(m_text->cursorPosition(), 0);
    EXPECT_EQ(m_text->selectionCount(), 0);
}

TEST_F(LogSpeech, A_line_too_long_for_its_row_is_read_row_by_row)
{
    openLog({QString(5000, u'x'), QStringLiteral("end")});
    const auto row = at(0, QAccessible::LineBoundary).size();
    EXPECT_EQ(row, m_log->layout().columns());
    EXPECT_EQ(at(static_cast<int>(row), QAccessible::LineBoundary).size(), row);
    EXPECT_EQ(at(0, QAccessible::ParagraphBoundary).size(), 5001);
}

TEST_F(LogSpeech, The_caret_and_the_selection_are_told_and_can_be_set)
{
    openLog(kLines);
    press(Qt::Key_Home, Qt::ControlModifier);
    press(Qt::Key_Down);
    EXPECT_EQ(m_text->cursorPosition(), 11);
    EXPECT_EQ(toldOf(QAccessible::TextCaretMoved), QStringList({QStringLiteral("0:"), QStringLiteral("11:")}));
    press(Qt::Key_End, Qt::ShiftModifier);
    int start = 0;
    int end = 0;
    m_text->selection(0, &start, &end);
    EXPECT_EQ(m_text->selectionCount(), 1);
    EXPECT_EQ(m_text->text(start, end), QStringLiteral("second line"));
    m_text->setSelection(0, 6, 17);
    EXPECT_EQ(m_log->selectedText(), QStringLiteral("line\nsecond"));
    m_text->removeSelection(0);
    EXPECT_EQ(m_text->selectionCount(), 0);
    EXPECT_EQ(m_text->cursorPosition(), 17);
}

TEST_F(LogSpeech, A_place_on_the_screen_is_a_place_in_the_text)
{
    openLog(kLines);
    const QRect character = m_text->characterRect(13);
    EXPECT_TRUE(m_spoken->rect().contains(character));
    EXPECT_EQ(m_text->offsetAtPoint(character.center() - QPoint(character.width() / 3, 0)), 13);
    m_log->setText(logLines(300).join(u'\n'));
    m_text->scrollToSubstring(0, 1);
    EXPECT_EQ(m_log->position(), 0);
}

TEST_F(LogSpeech, New_and_dropped_lines_are_told_together)
{
    openLog({});
    OperationRunner runner([](const QString &) { return QString(); });
    for (int i = 0; i < 2999; ++i)
        runner.append(QStringLiteral("old"));
    m_log->setSource(&runner);
    EXPECT_TRUE(QTest::qWaitFor([this] { return !toldOf(QAccessible::TextInserted).isEmpty(); }));
    told.clear();
    for (const char *line : {"one", "two", "three"})
        runner.append(QString::fromUtf8(line));
    EXPECT_TRUE(told.isEmpty());
    EXPECT_TRUE(QTest::qWaitFor([] { return told.size() == 2; }));
    EXPECT_EQ(toldOf(QAccessible::TextRemoved), QStringList(QStringLiteral("0:old\nold\n")));
    EXPECT_EQ(toldOf(QAccessible::TextInserted), QStringList(QStringLiteral("%1:one\ntwo\nthree\n").arg(2997 * 4)));
    m_log->setSource(nullptr);
}

} // namespace

} // namespace corvane::test
