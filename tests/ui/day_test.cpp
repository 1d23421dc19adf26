#include "tests/ui/day_states.h"
#include "tests/ui/screen.h"
#include "tests/ui/states.h"
#include "ui/history/day_canvas.h"
#include "ui/history/day_texts.h"

#include <QTest>

namespace corvane::test {

namespace {

class Day : private SeenDay, public Screen {
protected:
    void openDay(int hours)
    {
        openDashboard();
        showRunning(m_app);
        showHistory(m_app, hours);
        ASSERT_TRUE(QTest::qWaitFor([this] { return !m_app.day().record().spans().isEmpty(); }));
        settle();
    }
    void both(const QString &name)
    {
        QQuickItem *area = find(QStringLiteral("dashboard"));
        QMetaObject::invokeMethod(area, "scrollTo", Q_ARG(double, 250.0));
        bothPictures(name);
    }
    void resize(int width, int height)
    {
        window()->resize(width, height);
        QTest::qWait(30);
    }
    [[nodiscard]] DayCanvas *canvas() const { return qobject_cast<DayCanvas *>(find(QStringLiteral("dayCanvas"))); }
    /// Where the item is in the dashboard, however far that is scrolled.
    [[nodiscard]] QRectF placeOf(const QString &name) const
    {
        const QQuickItem *item = find(name);
        const auto *inside = find(QStringLiteral("dashboard"))->property("contentItem").value<QQuickItem *>();
        return item->mapRectToItem(inside, QRectF(0, 0, item->width(), item->height()));
    }
};

} // namespace

TEST_F(Day, Pictures)
{
    openDay(24);
    resize(860, 620);
    both(QStringLiteral("day-860x620"));
    resize(980, 720);
    both(QStringLiteral("day-980x720"));
    resize(1600, 1000);
    both(QStringLiteral("day-1600x1000"));
    resize(980, 720);
    showHistory(m_app, 1);
    both(QStringLiteral("day-young"));
    m_app.setHistory(PiholeHistory());
    m_app.setTopBlocked(PiholeTopBlocked());
    both(QStringLiteral("day-empty"));
    showHistory(m_app, 24);
    showUsedButDead(m_app);
    both(QStringLiteral("day-gone"));
    m_app.setHistory(std::nullopt);
    m_app.setTopBlocked(std::nullopt);
    both(QStringLiteral("day-never-read"));
}

} // namespace corvane::test
