#include "tests/ui/screen.h"
#include "tests/ui/states.h"
#include "ui/log/log_text_view.h"

#include <QTest>
#include <QWheelEvent>

namespace corvane::test {

namespace {

/// Two fingers on a trackpad, over a log on a page that scrolls as well.
class LogWheel : public Screen {
protected:
    void SetUp() override
    {
        openDashboard();
        m_log = qobject_cast<LogTextView *>(find(QStringLiteral("piholeLogCanvas")));
        ASSERT_TRUE(m_log);
        m_log->setText(logLines(200).join(u'\n'));
    }

    /// Whether the log took the turn for itself.
    [[nodiscard]] bool takes(Qt::ScrollPhase phase, int pixels) const
    {
        const QPointF middle(m_log->width() / 2, m_log->height() / 2);
        QWheelEvent turn(middle, m_log->mapToGlobal(middle), {0, pixels}, {0, pixels}, Qt::NoButton, Qt::NoModifier,
                         phase, false);
        QCoreApplication::sendEvent(m_log, &turn);
        return turn.isAccepted();
    }

    LogTextView *m_log = nullptr;
};

TEST_F(LogWheel, What_is_left_of_a_gesture_at_the_end_of_the_log_does_not_move_the_page)
{
    EXPECT_TRUE(takes(Qt::ScrollBegin, 40));
    EXPECT_TRUE(takes(Qt::ScrollUpdate, -40));
    EXPECT_TRUE(takes(Qt::ScrollMomentum, -80)) << "the end is reached";
    EXPECT_TRUE(takes(Qt::ScrollMomentum, -80));
    EXPECT_TRUE(takes(Qt::ScrollEnd, 0));
}

TEST_F(LogWheel, A_new_gesture_at_the_end_of_the_log_moves_the_page)
{
    EXPECT_TRUE(takes(Qt::ScrollBegin, 40));
    EXPECT_TRUE(takes(Qt::ScrollMomentum, -80));
    EXPECT_FALSE(takes(Qt::ScrollBegin, -20));
    EXPECT_FALSE(takes(Qt::ScrollUpdate, -20));
}

TEST_F(LogWheel, A_wheel_at_the_end_of_the_log_moves_the_page)
{
    EXPECT_TRUE(takes(Qt::NoScrollPhase, 40));
    EXPECT_TRUE(takes(Qt::NoScrollPhase, -40));
    EXPECT_FALSE(takes(Qt::NoScrollPhase, -40));
}

} // namespace

} // namespace corvane::test
