#include "tests/ui/screen.h"
#include "tests/ui/states.h"

#include <QTcpServer>
#include <QTest>

namespace corvane::test {

namespace {

/// The picker of the admin page's port in the Settings window, and the one of the free ports in the set-up.
class PickerView : public Screen {
protected:
    void openSettings()
    {
        Screen::openSettings();
        m_picker = find(QStringLiteral("webPortPicker"));
        m_picker->forceActiveFocus(Qt::TabFocusReason);
    }

    void openPortsPanel()
    {
        showChecks(m_app, true);
        openStep(1);
        ASSERT_TRUE(QTest::qWaitFor([this] { return shows(QStringLiteral("freePortPicker")); }));
        m_picker = find(QStringLiteral("freePortPicker"));
        m_picker->forceActiveFocus(Qt::TabFocusReason);
    }

    void TearDown() override
    {
        lookAt(nullptr);
        Screen::TearDown();
    }

    [[nodiscard]] QObject *list() const { return m_picker->property("popup").value<QObject *>(); }
    [[nodiscard]] bool listOpen() const { return list()->property("visible").toBool(); }
    [[nodiscard]] QString shown() const { return m_picker->property("displayText").toString(); }

    QQuickItem *m_picker = nullptr;
};

class OpeningKey : public PickerView, public testing::WithParamInterface<Qt::Key> {};

TEST_P(OpeningKey, Opens_the_list_and_chooses_nothing)
{
    openSettings();
    press(GetParam());
    EXPECT_TRUE(listOpen());
    EXPECT_EQ(m_app.webPort(), 8080);
    press(Qt::Key_Escape);
    EXPECT_TRUE(QTest::qWaitFor([this] { return !listOpen(); }));
    EXPECT_EQ(m_app.webPort(), 8080);
    EXPECT_EQ(shown(), QStringLiteral("8080"));
}

TEST_P(OpeningKey, Held_down_leaves_the_list_open_as_it_is)
{
    openSettings();
    QTest::keyPress(window(), GetParam());
    for (int i = 0; i < 3; ++i) {
        QKeyEvent again(QEvent::KeyPress, GetParam(), Qt::NoModifier, QString(), true);
        QCoreApplication::sendEvent(window(), &again);
    }
    QTest::keyRelease(window(), GetParam());
    EXPECT_TRUE(listOpen());
    EXPECT_EQ(m_app.webPort(), 8080);
}

INSTANTIATE_TEST_SUITE_P(Keys, OpeningKey,
                         testing::Values(Qt::Key_Up, Qt::Key_Down, Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter));

class DeafKey : public PickerView, public testing::WithParamInterface<Qt::Key> {};

TEST_P(DeafKey, Does_nothing_to_a_closed_list)
{
    openSettings();
    press(GetParam());
    EXPECT_FALSE(listOpen());
    EXPECT_EQ(m_app.webPort(), 8080);
    EXPECT_EQ(shown(), QStringLiteral("8080"));
}

INSTANTIATE_TEST_SUITE_P(Keys, DeafKey, testing::Values(Qt::Key_Home, Qt::Key_End, Qt::Key_8, Qt::Key_Period));

TEST_F(PickerView, What_was_opened_by_key_is_chosen_by_key)
{
    openSettings();
    press(Qt::Key_Return);
    press(Qt::Key_Down);
    press(Qt::Key_Return);
    EXPECT_TRUE(QTest::qWaitFor([this] { return m_app.webPort() == 8081; })) << m_app.webPort();
    EXPECT_TRUE(QTest::qWaitFor([this] { return !listOpen(); }));
    EXPECT_EQ(shown(), QStringLiteral("8081"));
}

TEST_F(PickerView, Return_opens_the_list_of_free_ports_and_takes_none)
{
    openPortsPanel();
    press(Qt::Key_Return);
    EXPECT_TRUE(listOpen());
    EXPECT_EQ(m_app.webPort(), 8080);
    EXPECT_EQ(m_app.notice(), QString());
}

TEST_F(PickerView, Nothing_is_chosen_where_nothing_is_marked)
{
    openPortsPanel();
    press(Qt::Key_Return);
    press(Qt::Key_Return);
    EXPECT_FALSE(listOpen());
    EXPECT_EQ(m_app.webPort(), 8080);
    EXPECT_EQ(m_app.notice(), QString());
}

TEST_F(PickerView, Other_free_ports_leave_nothing_ticked_and_nothing_marked)
{
    openPortsPanel();
    m_app.setWebPort(8082);
    auto reports = m_app.portReports();
    reports.last().port = 8082;
    m_app.setPortReports(reports);
    EXPECT_EQ(m_picker->property("currentIndex").toInt(), -1);
    press(Qt::Key_Space);
    for (const QQuickItem *item : itemsOf(list()->property("contentItem").value<QQuickItem *>()))
        EXPECT_FALSE(item->property("chosen").toBool()) << qPrintable(item->property("text").toString());
}

TEST_F(PickerView, The_click_that_closes_the_list_presses_nothing_beneath)
{
    openSettings();
    press(Qt::Key_Space);
    ASSERT_TRUE(listOpen());
    const QQuickItem *toggle = find(QStringLiteral("launchAtLoginSwitch"));
    const QPointF spot = toggle->mapToScene(QPointF(20, toggle->height() / 2));
    QTest::mouseClick(window(), Qt::LeftButton, {}, spot.toPoint());
    EXPECT_TRUE(QTest::qWaitFor([this] { return !listOpen(); }));
    EXPECT_FALSE(m_loginItem.enabled);
    QTest::mouseClick(window(), Qt::LeftButton, {}, spot.toPoint());
    EXPECT_TRUE(m_loginItem.enabled);
}

TEST_F(PickerView, A_second_click_on_the_button_closes_its_list)
{
    openSettings();
    const QPoint middle = m_picker->mapToScene(QPointF(m_picker->width() / 2, m_picker->height() / 2)).toPoint();
    QTest::mouseClick(window(), Qt::LeftButton, {}, middle);
    EXPECT_TRUE(listOpen());
    QTest::mouseClick(window(), Qt::LeftButton, {}, middle);
    EXPECT_TRUE(QTest::qWaitFor([this] { return !listOpen(); }));
    EXPECT_EQ(m_app.webPort(), 8080);
}

TEST_F(PickerView, The_wheel_over_a_closed_list_chooses_nothing)
{
    openSettings();
    const QPointF middle = m_picker->mapToScene(QPointF(m_picker->width() / 2, m_picker->height() / 2));
    QWheelEvent turn(middle, window()->mapToGlobal(middle), {}, {0, -120}, Qt::NoButton, Qt::NoModifier,
                     Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(window(), &turn);
    EXPECT_EQ(m_app.webPort(), 8080);
}

TEST_F(PickerView, A_refused_choice_leaves_the_old_one_on_screen)
{
    QTcpServer other;
    ASSERT_TRUE(other.listen(QHostAddress::LocalHost, 8083));
    openSettings();
    press(Qt::Key_Space);
    for (int i = 0; i < 3; ++i)
        press(Qt::Key_Down);
    press(Qt::Key_Return);
    EXPECT_EQ(textOf(QStringLiteral("noticeText")), m_app.notice());
    EXPECT_FALSE(m_app.notice().isEmpty());
    const auto *label = m_picker->property("contentItem").value<QQuickItem *>();
    EXPECT_EQ(label->property("text").toString(), QStringLiteral("8080"));
    EXPECT_EQ(m_picker->property("currentIndex").toInt(), 0);
}

TEST_F(PickerView, An_index_beyond_the_choices_is_no_choice)
{
    openSettings();
    for (const int index : {-1, 11})
        QMetaObject::invokeMethod(m_picker, "activated", Q_ARG(int, index));
    QTest::qWait(20);
    EXPECT_EQ(m_app.webPort(), 8080);
    EXPECT_EQ(m_app.notice(), QString());
}

} // namespace

} // namespace corvane::test
