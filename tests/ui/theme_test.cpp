#include "tests/ui/screen.h"
#include "tests/ui/states.h"
#include "ui/accent.h"

#include <QTest>

namespace corvane::test {

namespace {

bool isGreen(const QColor &color) { return color.green() > color.red() + 60 && color.green() > color.blue() + 40; }
bool isOrange(const QColor &color) { return color.red() > color.green() + 40 && color.green() > color.blue() + 70; }
bool isRed(const QColor &color) { return color.red() > color.green() + 120 && color.red() > color.blue() + 120; }
bool isGray(const QColor &color)
{
    return std::max({color.red(), color.green(), color.blue()}) - std::min({color.red(), color.green(), color.blue()}) <
           12;
}

/// What the colours on the screens say, and how they follow what the user asked of the system.
class Colours : public Screen, public testing::WithParamInterface<bool> {
protected:
    void SetUp() override { setDark(GetParam()); }

    [[nodiscard]] QColor colorOf(const char *name) const
    {
        return find(QString::fromLatin1(name))->property("color").value<QColor>();
    }
    /// Of the operation that is shown.
    [[nodiscard]] const QQuickItem *operationResult() const
    {
        for (const QQuickItem *item : itemsOf(window()->contentItem()))
            if (inSight(item) && item->objectName() == QLatin1String("operationResult")) return item;
        return nullptr;
    }
    /// The colour of the first symbol of this name.
    [[nodiscard]] QColor symbol(const char *name) const
    {
        for (const QQuickItem *item : itemsOf(window()->contentItem()))
            if (inSight(item) && item->property("name").toString() == QLatin1String(name))
                return item->property("color").value<QColor>();
        return {};
    }
    [[nodiscard]] QList<QQuickItem *> ofKind(const char *kind) const
    {
        QList<QQuickItem *> found;
        for (QQuickItem *item : itemsOf(window()->contentItem()))
            if (inSight(item) && QByteArray(item->metaObject()->className()).startsWith(kind)) found << item;
        return found;
    }
};

TEST_P(Colours, Of_the_dashboards_dot_tell_the_states_apart)
{
    openDashboard();
    EXPECT_TRUE(isGray(colorOf("statusDot"))) << "not checked yet";
    showRunning(m_app);
    EXPECT_TRUE(isGreen(colorOf("statusDot")));
    m_app.setUsedByMac(false);
    EXPECT_TRUE(isOrange(colorOf("statusDot")));
    showUsedButDead(m_app);
    EXPECT_TRUE(isRed(colorOf("statusDot")));
    showStopped(m_app);
    EXPECT_TRUE(isGray(colorOf("statusDot")));
}

TEST_P(Colours, Of_the_symbols_tell_good_from_doubtful_from_bad)
{
    showChecks(m_app, true);
    openStep(1);
    EXPECT_TRUE(isGreen(symbol("checkmark.circle.fill")));
    EXPECT_TRUE(isOrange(symbol("exclamationmark.triangle.fill")));
    EXPECT_TRUE(isRed(symbol("xmark.octagon.fill")));
}

TEST_P(Colours, Of_a_failed_operation_are_red_and_of_a_good_one_are_not)
{
    openStep(2);
    {
        const SleepingOperation cancelled(*m_app.installOp());
    }
    ASSERT_TRUE(operationResult());
    EXPECT_EQ(operationResult()->property("text").toString(), QStringLiteral("Cancelled."));
    EXPECT_TRUE(isRed(operationResult()->property("color").value<QColor>()));
    CommandStep step;
    step.exe = QStringLiteral("/bin/true");
    m_app.installOp()->start(QStringLiteral("Installing"), {step});
    ASSERT_TRUE(QTest::qWaitFor([this] { return m_app.installOp()->ended(); }));
    ASSERT_TRUE(operationResult());
    EXPECT_TRUE(isGray(operationResult()->property("color").value<QColor>()));
    EXPECT_TRUE(isGreen(symbol("checkmark.circle.fill")));
}

TEST_P(Colours, Are_further_apart_where_the_user_wants_more_contrast)
{
    m_appearance.sharp = true;
    Q_EMIT m_appearance.changed();
    openDashboard();
    showRunning(m_app);
    const QColor box = GetParam() ? QColor(0x2a, 0x2a, 0x2c) : QColor(Qt::white);
    for (const QQuickItem *button : ofKind("PushButton")) {
        const auto *background = button->property("background").value<QQuickItem *>();
        const QColor edge = background->property("border").value<QObject *>()->property("color").value<QColor>();
        EXPECT_GE(contrast(edge, box), 3) << qPrintable(button->objectName());
    }
    for (const QQuickItem *note : ofKind("NoteText"))
        if (note->property("color").value<QColor>() != colorOf("statusLine")) {
            EXPECT_GE(contrast(note->property("color").value<QColor>(), box), 7) << qPrintable(note->objectName());
        }
    picture(QStringLiteral("dashboard-contrast-%1").arg(GetParam() ? QStringLiteral("dark") : QStringLiteral("light")));
}

INSTANTIATE_TEST_SUITE_P(Look, Colours, testing::Bool(),
                         [](const auto &look) { return std::string(look.param ? "Dark" : "Light"); });

class Motion : public Screen {
protected:
    /// Where the piece of the progress bar is, seen at several moments.
    [[nodiscard]] QSet<double> placesOfThePiece()
    {
        QSet<double> places;
        for (int i = 0; i < 8; ++i) {
            QTest::qWait(40);
            for (const QQuickItem *item : itemsOf(window()->contentItem()))
                if (inSight(item) && QByteArray(item->metaObject()->className()).startsWith("RunningPiece"))
                    places << item->childItems().first()->x();
        }
        return places;
    }
};

TEST_F(Motion, Runs_where_nobody_minds)
{
    openStep(2);
    const SleepingOperation installing(*m_app.installOp());
    EXPECT_GT(placesOfThePiece().size(), 2) << "at one place: " << placesOfThePiece().values().value(0);
}

TEST_F(Motion, Stops_where_the_user_wants_less_of_it)
{
    m_appearance.still = true;
    Q_EMIT m_appearance.changed();
    openStep(2);
    const SleepingOperation installing(*m_app.installOp());
    EXPECT_EQ(placesOfThePiece().size(), 1);
}

TEST_F(Motion, Of_a_switch_is_left_out_where_the_user_wants_less_of_it)
{
    m_appearance.still = true;
    Q_EMIT m_appearance.changed();
    m_windows.openSettings();
    lookAt(m_windows.settings());
    ASSERT_TRUE(QTest::qWaitForWindowExposed(window()));
    const auto *track = find(QStringLiteral("launchAtLoginSwitch"))->property("indicator").value<QQuickItem *>();
    const double off = track->childItems().first()->x();
    m_app.setLaunchAtLogin(true);
    const double on = track->childItems().first()->x();
    lookAt(nullptr);
    EXPECT_EQ(off, 2);
    EXPECT_EQ(on, track->width() - track->height() + 2);
}

} // namespace

} // namespace corvane::test
