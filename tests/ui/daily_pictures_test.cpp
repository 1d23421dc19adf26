#include "tests/ui/screen.h"
#include "tests/ui/states.h"

#include <QTest>

#include <algorithm>

namespace corvane::test {

namespace {

/// Pictures of the days after the set-up, for people to look at: smallest and large window, light and dark.
class DailyPictures : public Screen {
protected:
    DailyPictures() { showRunning(m_app); }

    Repair &repair() { return *m_app.repair(); }

    void each(const QString &name, const char *inSight, const std::function<void()> &show)
    {
        each(name, inSight, show, [] {});
    }

    void each(const QString &name, const char *inSight, const std::function<void()> &show,
              const std::function<void()> &end)
    {
        for (const bool dark : {false, true}) {
            setDark(dark);
            openDashboard();
            for (const QSize size : {QSize(860, 620), QSize(1600, 1000)}) {
                window()->resize(size);
                show();
                QTest::qWait(20);
                bringIntoSight(QString::fromLatin1(inSight));
                picture(QStringLiteral("%1-%2-%3").arg(name).arg(size.width()).arg(dark ? u"dark" : u"light"));
                end();
            }
        }
    }

    /// Scrolls so that the item is a little below the window's header.
    void bringIntoSight(const QString &name)
    {
        QQuickItem *item = find(name);
        ASSERT_TRUE(item) << name.toStdString();
        for (QQuickItem *above = item->parentItem(); above; above = above->parentItem()) {
            if (!above->inherits("QQuickFlickable")) continue;
            auto *content = above->property("contentItem").value<QQuickItem *>();
            const double most = std::max(0.0, content->height() - above->height());
            above->setProperty("contentY", std::min(most, std::max(0.0, item->mapToItem(content, QPointF()).y() - 20)));
            break;
        }
        QTest::qWait(20);
    }

    void showNames(int count)
    {
        QList<BlockedName> names;
        for (int number = 0; number < count; ++number)
            names << BlockedName{QStringLiteral("tracker%1.metrics.shop.example").arg(number),
                                 number % 5 + 1,
                                 BlockedName::By::List,
                                 QStringLiteral("raw.githubusercontent.com/StevenBlack/hosts/master/hosts"),
                                 number == 1 ? QStringLiteral("stats.g.doubleclick.net") : QString(),
                                 true};
        repair().setWatching(true);
        repair().setNames(names);
    }

    void showLists(qint64 age)
    {
        PiholeSummary summary = *m_app.summary();
        summary.domainsBlocked = 150'025;
        summary.listsRun = QDateTime::currentSecsSinceEpoch() - age;
        m_app.setSummary(summary);
    }
};

const char *const kRepair = "repairBox";
const char *const kLists = "listsText";

} // namespace

TEST_F(DailyPictures, What_is_blocked)
{
    each(QStringLiteral("daily-repair-empty"), kRepair, [&] { repair().setWatching(true); });
    each(QStringLiteral("daily-repair-3"), kRepair, [&] { showNames(3); });
    each(QStringLiteral("daily-repair-60"), kRepair, [&] { showNames(60); });
    each(QStringLiteral("daily-repair-allowed"), kRepair, [&] {
        showNames(3);
        repair().setPermissions({{QStringLiteral("tracker0.metrics.shop.example"), QDateTime::currentDateTime()},
                                 {QStringLiteral("login.bank.example"), std::nullopt}});
        repair().setMessage(QStringLiteral("tracker0.metrics.shop.example is allowed (until 15:05) and answers now. "
                                           "Load the page again."));
        repair().setUndoName(QStringLiteral("tracker0.metrics.shop.example"));
    });
    EXPECT_TRUE(shows(QStringLiteral("repairUndo")));
}

TEST_F(DailyPictures, A_pause)
{
    each(QStringLiteral("daily-pause"), "pauseButton", [&] { showPaused(m_app, 298.5); });
    EXPECT_TRUE(shows(QStringLiteral("pauseLeft")));
    m_app.setBlocking(PiholeBlocking{true, std::nullopt});
    each(QStringLiteral("daily-pause-menu"), "pauseButton", [&] {
        if (!shows(QStringLiteral("pauseHalfMinute"))) click(QStringLiteral("pauseMenuButton"));
    });
}

TEST_F(DailyPictures, Lists)
{
    each(QStringLiteral("daily-lists-old"), kLists, [&] { showLists(qint64{9} * 86'400); });
    m_app.setNotes({{QStringLiteral("lists"),
                     QStringLiteral("The block lists are loaded.\nlists.example/hosts.txt could not be fetched. Its "
                                    "old copy stays in use.")}});
    each(QStringLiteral("daily-lists-failed"), kLists, [&] { showLists(60); });
    m_app.setNotes({});
    const auto run = [&] {
        showLists(qint64{9} * 86'400);
        m_app.setBusy({QStringLiteral("lists")});
        m_app.listRun()->begin(3);
        m_app.listRun()->hear("  [i] Target: https://lists.example/hosts.txt\n  [i] Status: Pending...\n");
    };
    each(QStringLiteral("daily-lists-running"), kLists, run, [&] {
        EXPECT_TRUE(shows(QStringLiteral("listsProgress")));
        m_app.listRun()->end();
        m_app.setBusy({});
    });
}

} // namespace corvane::test
