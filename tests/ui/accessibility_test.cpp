#include "tests/ui/screen.h"
#include "tests/ui/states.h"
#include "ui/accent.h"

#include <QAccessible>
#include <QMap>
#include <QTest>

namespace corvane::test {

namespace {

QList<QAccessibleInterface *> spoken(QAccessibleInterface *root)
{
    QList<QAccessibleInterface *> all;
    for (int i = 0; i < root->childCount(); ++i) {
        QAccessibleInterface *child = root->child(i);
        if (!child || child->state().invisible) continue;
        all << child << spoken(child);
    }
    return all;
}

QString describe(QAccessibleInterface *interface)
{
    const QObject *object = interface->object();
    return QStringLiteral("%1 (%2) role %3")
        .arg(object->objectName(), QString::fromLatin1(object->metaObject()->className()))
        .arg(interface->role());
}

/// The colour most of the item's area shows: what is behind its text.
QColor backdrop(const QImage &picture, const QRectF &area)
{
    QMap<QRgb, int> counts;
    const QRect pixels = area.toRect().intersected(picture.rect());
    for (int y = pixels.top(); y <= pixels.bottom(); ++y)
        for (int x = pixels.left(); x <= pixels.right(); ++x)
            ++counts[picture.pixel(x, y)];
    const auto most = std::ranges::max_element(counts);
    return counts.isEmpty() ? QColor() : QColor(std::next(counts.begin(), std::distance(counts.begin(), most)).key());
}

class Accessibility : public Screen {
protected:
    void expectNamesAndRoles()
    {
        QAccessibleInterface *root = QAccessible::queryAccessibleInterface(window());
        ASSERT_TRUE(root);
        int controls = 0;
        for (QAccessibleInterface *interface : spoken(root)) {
            EXPECT_NE(interface->role(), QAccessible::NoRole) << qPrintable(describe(interface));
            EXPECT_FALSE(interface->text(QAccessible::Name).isEmpty()) << qPrintable(describe(interface));
            ++controls;
        }
        EXPECT_GT(controls, 3);
        for (QQuickItem *item : itemsOf(window()->contentItem())) {
            if (!item->activeFocusOnTab() || !inSight(item)) continue;
            QAccessibleInterface *interface = QAccessible::queryAccessibleInterface(item);
            ASSERT_TRUE(interface) << qPrintable(item->objectName()) << item->metaObject()->className();
            EXPECT_FALSE(interface->text(QAccessible::Name).isEmpty()) << qPrintable(describe(interface));
        }
    }

    void expectContrast(const QString &screen)
    {
        const QImage picture = window()->grabWindow();
        const QRectF room(0, 0, window()->width(), window()->height());
        for (const QQuickItem *item : itemsOf(window()->contentItem())) {
            const QVariant color = item->property("color");
            if (!inSight(item) || !item->isEnabled() || item->property("text").toString().isEmpty() || !color.isValid())
                continue;
            const QRectF area = item->mapRectToScene(QRectF(0, 0, item->width(), item->height()));
            if (!room.contains(area)) continue;
            EXPECT_GE(contrast(color.value<QColor>(), backdrop(picture, area)), 4.5)
                << qPrintable(screen) << ": " << qPrintable(item->property("text").toString());
        }
    }

    void expectGood(const QString &screen)
    {
        // High enough that nothing is scrolled out of sight.
        window()->resize(window()->width(), 2400);
        QTest::qWait(30);
        expectNamesAndRoles();
        expectContrast(screen + QStringLiteral(" light"));
        setDark(true);
        expectContrast(screen + QStringLiteral(" dark"));
        setDark(false);
    }
};

TEST_F(Accessibility, The_dashboard_is_spoken_and_readable)
{
    openDashboard();
    showRunning(m_app);
    expectGood(QStringLiteral("dashboard"));
    m_app.setNotice(QStringLiteral("The first thing is as it was."));
    m_app.setApiMessage(QStringLiteral("The second one rests for a while."));
    m_app.setStartMessage(QStringLiteral("The third one does not run. Do something first (step 9)."));
    m_app.setDnsMessage(QStringLiteral("You did not want the fourth one. Nothing was done."));
    m_app.setUpdateMessage(QStringLiteral("Version 2026.10.0 is available."));
    showAllPassed(m_app);
    expectGood(QStringLiteral("messages"));
    showUsedButDead(m_app);
    expectGood(QStringLiteral("banner"));
}

TEST_F(Accessibility, A_question_is_spoken_and_readable)
{
    Alert alert;
    alert.title = QStringLiteral("Remove it?");
    alert.text = QStringLiteral("This removes all of it, and what belongs to it.");
    alert.accept = QStringLiteral("Remove it");
    alert.reject = QStringLiteral("Cancel");
    for (const Alert::Style style : {Alert::Style::Informational, Alert::Style::Warning}) {
        alert.style = style;
        const QCoro::Task<bool> asked = m_dialogs.confirm(alert);
        lookAt(m_windows.alert());
        ASSERT_TRUE(QTest::qWaitForWindowExposed(window()));
        expectGood(QStringLiteral("question"));
        m_dialogs.answer(false);
        lookAt(nullptr);
    }
}

TEST_F(Accessibility, An_operation_with_its_open_log_is_spoken_and_readable)
{
    openStep(2);
    {
        const SleepingOperation operation(*m_app.installOp(), QStringLiteral("Making something"));
        for (const QString &line : logLines(5))
            m_app.installOp()->append(line);
        click(QStringLiteral("installLogDetailsHeader"));
        expectGood(QStringLiteral("running"));
    }
    expectGood(QStringLiteral("failed"));
}

TEST_F(Accessibility, The_Settings_sheet_and_its_open_picker_are_spoken)
{
    openDashboard();
    click(QStringLiteral("settingsButton"));
    ASSERT_TRUE(QTest::qWaitFor([this] { return shows(QStringLiteral("closeSettingsButton")); }));
    expectNamesAndRoles();
    click(QStringLiteral("webPortPicker"));
    expectNamesAndRoles();
    press(Qt::Key_Escape);
    EXPECT_TRUE(shows(QStringLiteral("closeSettingsButton"))) << "Escape closes the list alone";
}

TEST_F(Accessibility, Every_step_is_spoken_and_readable)
{
    openStep(0);
    expectGood(QStringLiteral("welcome"));
    openStep(1);
    showChecks(m_app, true);
    expectGood(QStringLiteral("checks"));
    openStep(2);
    expectGood(QStringLiteral("install"));
    openStep(3);
    showPiholeTests(m_app, false);
    expectGood(QStringLiteral("pihole"));
    openStep(4);
    expectGood(QStringLiteral("blocking"));
    openStep(5);
    showServices(m_app);
    m_app.setPiholeOnly(true);
    expectGood(QStringLiteral("dns"));
    openStep(6);
    showBrowsers(m_app);
    expectGood(QStringLiteral("browser"));
    openStep(7);
    showAllPassed(m_app);
    expectGood(QStringLiteral("done"));
}

TEST_F(Accessibility, Settings_are_spoken_and_readable)
{
    m_windows.openSettings();
    lookAt(m_windows.settings());
    ASSERT_TRUE(QTest::qWaitForWindowExposed(window()));
    expectGood(QStringLiteral("settings"));
    lookAt(nullptr);
}

TEST_F(Accessibility, A_step_is_spoken_with_its_state_and_place)
{
    openStep(0);
    m_app.go(1);
    settle();
    const auto name = [this](const char *item) {
        return QAccessible::queryAccessibleInterface(find(QString::fromLatin1(item)))->text(QAccessible::Name);
    };
    EXPECT_EQ(name("step1"), QStringLiteral("Welcome, done, step 1 of 8"));
    EXPECT_EQ(name("step4"), QStringLiteral("Start Pi-hole, not done yet, step 4 of 8"));
}

TEST_F(Accessibility, A_screen_reader_presses_every_kind_of_control_once)
{
    const auto press = [this](const char *name) {
        QAccessibleInterface *control = QAccessible::queryAccessibleInterface(find(QString::fromLatin1(name)));
        ASSERT_TRUE(control && control->actionInterface()) << name;
        control->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        QTest::qWait(10);
    };
    openStep(0);
    press("nextButton");
    EXPECT_EQ(m_app.step(), 1);
    settle();
    press("step6");
    EXPECT_EQ(m_app.step(), 5);
    settle();
    press("piholeOnlySwitch");
    EXPECT_TRUE(m_app.piholeOnly());
    press("toggleWizardButton");
    EXPECT_FALSE(m_app.showWizard());
    settle();
    press("stopButton");
    EXPECT_TRUE(m_app.startMessage().isEmpty()) << "a button that is off does nothing";
}

TEST_F(Accessibility, A_control_that_is_off_says_so)
{
    openStep(0);
    const auto says = [this](const char *name) {
        return QAccessible::queryAccessibleInterface(find(QString::fromLatin1(name)))->text(QAccessible::Description);
    };
    EXPECT_EQ(says("backButton"), QStringLiteral("Not available now"));
    EXPECT_EQ(says("nextButton"), QString());
}

TEST_F(Accessibility, Tab_goes_through_the_step_in_reading_order)
{
    openStep(3);
    m_app.setDockerWorks(true);
    find(QStringLiteral("toggleWizardButton"))->forceActiveFocus(Qt::TabFocusReason);
    QStringList order;
    for (int i = 0; i < 18; ++i) {
        order << focused();
        press(Qt::Key_Tab);
    }
    EXPECT_EQ(order.join(u' ').toStdString(),
              "toggleWizardButton settingsButton step1 step2 step3 step4 step5 step6 step7 step8 passwordField "
              "generateButton copyPasswordButton startPiholeButton piholeButton backButton nextButton "
              "toggleWizardButton");
}

TEST_F(Accessibility, The_set_up_is_walked_by_keyboard_alone)
{
    openStep(0);
    for (int i = 0; i < 40 && focused() != QStringLiteral("nextButton"); ++i)
        press(Qt::Key_Tab);
    for (int step = 1; step < 8; ++step) {
        press(Qt::Key_Space);
        settle();
        EXPECT_EQ(m_app.step(), step);
    }
}

} // namespace

} // namespace corvane::test
