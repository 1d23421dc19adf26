#include "tests/sentences/on_screen.h"

#include "tests/support/pass_time.h"
#include "ui/commands.h"
#include "ui/file_panels.h"
#include "ui/looks.h"
#include "ui/menu_content.h"
#include "ui/windows.h"

#include <QApplication>
#include <QDeadlineTimer>
#include <QLineEdit>
#include <QTest>

#include <algorithm>

namespace corvane::test {

namespace {

constexpr int kPatience = 20'000; // milliseconds

QFileDialog *openFilePanel()
{
    const QWidgetList widgets = QApplication::topLevelWidgets();
    for (QWidget *widget : widgets) {
        auto *panel = qobject_cast<QFileDialog *>(widget);
        if (panel && panel->isVisible()) return panel;
    }
    return nullptr;
}

} // namespace

void PrintTo(const Question &question, std::ostream *out)
{
    *out << question.heading << '\n' << question.message << "\n[" << question.reject << "] [" << question.accept << "]";
}

/// Everything between a model and its user.
struct OnScreen::Views {
    Views(AppModel &model, Workspace &workspace, Dialogs &dialogs, SettingsStore &store)
        : appearance(systemAppearance())
        , looks(model, *appearance)
        , commands(model, workspace)
        , windows([this, &model] { return std::make_unique<ScreenEngine>(model, looks, commands); }, dialogs, workspace,
                  store)
        , filePanels(dialogs, windows)
        , menu(model, looks, commands, {[this] { windows.openMain(); }, [] {}})
    {}

    std::unique_ptr<Appearance> appearance;
    Looks looks;
    Commands commands;
    Windows windows;
    FilePanels filePanels;
    MenuContent menu;
    QPointer<QQuickWindow> front;
};

OnScreen::OnScreen() = default;

OnScreen::~OnScreen() { m_views.reset(); }

void OnScreen::TearDown()
{
    if (HasFailure()) return;
    settle();
    EXPECT_TRUE(QtWarnings::all().isEmpty()) << qPrintable(QtWarnings::all().join(u'\n'));
}

void OnScreen::start(const char *state)
{
    m_views.reset();
    settings = {};
    MacTest::begin(QString::fromLatin1(state));
    m_views = std::make_unique<Views>(model(), *workspace, dialogs, settings);
}

void OnScreen::startAgain(const std::function<void()> &meanwhile)
{
    m_views.reset();
    quit();
    meanwhile();
    relaunch();
    m_views = std::make_unique<Views>(model(), *workspace, dialogs, settings);
}

void OnScreen::begin(const char *state)
{
    start(state);
    run(model().refreshStatus(Stats::Include));
    if (!model().containerState().isRunning()) return;
    mac("pihole log-delay 0");
    mac("pihole login-limit 1000"); // these tests log in faster than people
}

void OnScreen::mac(const char *order)
{
    const QString words = QString::fromUtf8(order);
    if (words.contains(u'|'))
        Mac::ctl(words.split(u'|'));
    else
        Mac::ctl(words);
}

void OnScreen::openMain(bool wizard)
{
    model().setShowWizard(wizard);
    m_views->windows.openMain();
    m_views->front = m_views->windows.main();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(m_views->front));
    settle();
}

void OnScreen::openStep(int number)
{
    model().go(number - 1);
    openMain(true);
}

void OnScreen::openDashboard() { openMain(false); }

void OnScreen::openSettings()
{
    m_views->windows.openSettings();
    m_views->front = m_views->windows.settings();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(m_views->front));
}

QQuickWindow *OnScreen::window() const
{
    QQuickWindow *question = m_views->windows.alert();
    return question ? question : m_views->front.data();
}

void OnScreen::pressButton(const char *label)
{
    QList<QQuickItem *> buttons;
    const auto look = [&] {
        buttons.clear();
        for (QQuickItem *item : itemsOf(window()->contentItem())) {
            if (item->inherits("QQuickAbstractButton") && inSight(item) && item->isEnabled() &&
                item->property("text").toString() == QString::fromUtf8(label))
                buttons << item;
        }
        return !buttons.isEmpty();
    };
    ASSERT_TRUE(eventually(look)) << "No button to press: " << label << "\non " << texts().join(u'\n').toStdString();
    ASSERT_EQ(buttons.size(), 1) << label;
    click(*buttons.first());
}

QStringList OnScreen::menuItems()
{
    m_views->menu.popup(QPoint());
    QStringList items;
    const QList<QAction *> actions = m_views->menu.actions();
    for (const QAction *action : actions) {
        if (action->isVisible() && !action->isSeparator()) items << action->text();
    }
    m_views->menu.close();
    return items;
}

void OnScreen::chooseInMenu(const char *label)
{
    QMenu &menu = m_views->menu;
    menu.popup(QPoint());
    const QList<QAction *> actions = menu.actions();
    const auto action = std::ranges::find(actions, QString::fromUtf8(label), &QAction::text);
    ASSERT_NE(action, actions.end()) << label;
    QTest::mouseClick(&menu, Qt::LeftButton, {}, menu.actionGeometry(*action).center());
}

void OnScreen::pick(const char *picker, const char *choice)
{
    click(QString::fromLatin1(picker));
    pressButton(choice);
}

QFileDialog *OnScreen::filePanel()
{
    return eventually([] { return openFilePanel() != nullptr; }) ? openFilePanel() : nullptr;
}

void OnScreen::chooseFile(const QString &path)
{
    QFileDialog *panel = filePanel();
    ASSERT_TRUE(panel);
    auto *name = panel->findChild<QLineEdit *>();
    ASSERT_TRUE(name);
    name->setText(path);
    QMetaObject::invokeMethod(panel, "accept");
}

testing::AssertionResult OnScreen::shown(const char *sentence, const std::function<bool(const QString &)> &is)
{
    const bool found = eventually([&] {
        const QStringList all = texts();
        return std::ranges::any_of(
            all, [&](const QString &text) { return is(text) || std::ranges::any_of(text.split(u'\n'), is); });
    });
    if (found) return testing::AssertionSuccess();
    return testing::AssertionFailure() << sentence << "\nis not among\n" << texts().join(u'\n').toStdString();
}

testing::AssertionResult OnScreen::appears(const char *sentence)
{
    return shown(sentence, [wanted = QString::fromUtf8(sentence)](const QString &text) { return text == wanted; });
}

testing::AssertionResult OnScreen::appear(std::initializer_list<const char *> sentences)
{
    for (const char *sentence : sentences) {
        if (const auto result = appears(sentence); !result) return result;
    }
    return testing::AssertionSuccess();
}

testing::AssertionResult OnScreen::appearsWithReason(const char *sentence)
{
    return shown(sentence, [wanted = QString::fromUtf8(sentence)](const QString &text) {
        return text.startsWith(wanted) && text.size() > wanted.size() + 3;
    });
}

testing::AssertionResult OnScreen::asks(const Question &question)
{
    if (!eventually([this] { return m_views->windows.alert() != nullptr; }))
        return testing::AssertionFailure() << "Nothing is asked.";
    if (!QTest::qWaitForWindowExposed(window())) return testing::AssertionFailure() << "The question is not shown.";
    const auto text = [this](const char *name) { return textOf(QString::fromLatin1(name)).toStdString(); };
    const Question asked{text("alertHeading"), text("alertMessage"), text("alertAccept"), text("alertReject")};
    if (asked == question) return testing::AssertionSuccess();
    return testing::AssertionFailure() << "It is asked:\n" << testing::PrintToString(asked);
}

testing::AssertionResult OnScreen::logged(const char *log, const char *line)
{
    const QString canvas = QString::fromLatin1(log) + QStringLiteral("LogCanvas");
    if (!shows(canvas)) click(QString::fromLatin1(log) + QStringLiteral("DetailsHeader"));
    if (!shows(canvas)) return testing::AssertionFailure() << "The log is not shown.";
    click(canvas);
    QString text;
    const bool found = eventually([&] {
        press(Qt::Key_A, Qt::ControlModifier);
        text = find(canvas)->property("selectedText").toString();
        return text.split(u'\n').contains(QString::fromUtf8(line));
    });
    if (found) return testing::AssertionSuccess();
    return testing::AssertionFailure() << line << "\nis no line of\n" << text.toStdString();
}

bool OnScreen::eventually(const std::function<bool()> &condition)
{
    const QDeadlineTimer deadline(kPatience);
    while (!condition()) {
        if (deadline.hasExpired()) return false;
        passTime(5);
    }
    return true;
}

void OnScreen::settle()
{
    EXPECT_TRUE(eventually([this] { return quiet(); })) << "something is still under way";
    QTest::qWait(10);
}

} // namespace corvane::test
