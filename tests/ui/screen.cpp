#include "tests/ui/screen.h"

#include <QApplication>
#include <QDir>
#include <QSignalSpy>
#include <QStyleHints>
#include <QTest>

namespace corvane {

namespace {

QStringList warnings;

void noteWarnings(QtMsgType type, const QMessageLogContext &, const QString &message)
{
    if (type == QtDebugMsg || type == QtInfoMsg) return;
    // The offscreen platform owns up to what it has no use for.
    if (message.startsWith(QLatin1String("This plugin does not support "))) return;
    warnings << message;
}

QPalette paletteOf(bool dark)
{
    QPalette palette;
    palette.setColor(QPalette::Window, dark ? QColor(0x1e, 0x1e, 0x1e) : QColor(0xf5, 0xf5, 0xf7));
    palette.setColor(QPalette::WindowText, dark ? Qt::white : Qt::black);
    return palette;
}

} // namespace

Screen::Screen()
    : m_app(Surroundings{m_settings, m_dialogs, m_workspace, m_loginItem, m_clock, QUrl()})
    , m_looks(m_app)
    , m_commands(m_app, m_workspace)
    , m_windows([this] { return std::make_unique<ScreenEngine>(m_app, m_looks, m_commands); }, m_dialogs)
    , m_filePanels(m_dialogs)
{
    warnings.clear();
    qInstallMessageHandler(noteWarnings);
    QApplication::setPalette(paletteOf(false));
}

Screen::~Screen() { qInstallMessageHandler(nullptr); }

void Screen::TearDown()
{
    settle();
    EXPECT_TRUE(warnings.isEmpty()) << qPrintable(warnings.join(u'\n'));
}

void Screen::openDashboard()
{
    m_app.setShowWizard(false);
    m_windows.openMain();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(window()));
    settle();
}

void Screen::openStep(int step)
{
    m_app.setShowWizard(true);
    m_app.go(step);
    m_windows.openMain();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(window()));
    settle();
}

void Screen::settle()
{
    EXPECT_TRUE(QTest::qWaitFor([this] { return m_app.busy().isEmpty() || m_front; }));
    QTest::qWait(20);
}

QList<QQuickItem *> itemsOf(QQuickItem *root)
{
    QList<QQuickItem *> items{root};
    for (QQuickItem *child : root->childItems())
        items << itemsOf(child);
    return items;
}

bool inSight(const QQuickItem *item) { return item->isVisible() && item->width() > 0 && item->height() > 0; }

QQuickItem *Screen::find(const QString &name) const
{
    for (QQuickItem *item : itemsOf(window()->contentItem())) {
        if (item->objectName() == name) return item;
    }
    return nullptr;
}

bool Screen::shows(const QString &name) const
{
    const QQuickItem *item = find(name);
    return item && inSight(item);
}

bool Screen::enabled(const QString &name) const
{
    const QQuickItem *item = find(name);
    return item && inSight(item) && item->isEnabled();
}

QString Screen::textOf(const QString &name) const
{
    const QQuickItem *item = find(name);
    return item && inSight(item) ? item->property("text").toString() : QString();
}

QStringList Screen::texts() const
{
    QStringList texts;
    for (const QQuickItem *item : itemsOf(window()->contentItem())) {
        const QString text = inSight(item) ? item->property("text").toString() : QString();
        if (!text.isEmpty()) texts << text;
    }
    return texts;
}

bool Screen::reads(const QString &text) const
{
    const QStringList all = texts();
    return std::ranges::any_of(all, [&](const QString &shown) { return shown.contains(text); });
}

void Screen::layOut()
{
    QTest::qWait(5);
    // A window lays its views out when it is drawn.
    Q_UNUSED(window()->grabWindow())
}

void Screen::click(const QString &name)
{
    QQuickItem *item = find(name);
    ASSERT_TRUE(item) << qPrintable(name);
    layOut();
    item->forceActiveFocus();
    layOut();
    const QPointF middle = item->mapToScene(QPointF(item->width() / 2, item->height() / 2));
    QTest::mouseClick(window(), Qt::LeftButton, {}, middle.toPoint());
    QTest::qWait(10);
}

void Screen::press(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    QTest::keyClick(window(), key, modifiers);
    QTest::qWait(5);
}

void Screen::type(const QString &text)
{
    for (const QChar sign : text)
        QTest::keyClick(window(), sign.toLatin1());
    QTest::qWait(5);
}

QString Screen::focused() const
{
    const QQuickItem *item = window()->activeFocusItem();
    return item ? item->objectName() : QString();
}

void Screen::setDark(bool dark)
{
    QApplication::setPalette(paletteOf(dark));
    QTest::qWait(20);
}

QImage Screen::picture(const QString &name)
{
    QTest::qWait(160);
    const QImage image = window()->grabWindow();
    QDir().mkpath(QStringLiteral(CORVANE_PICTURES));
    EXPECT_TRUE(image.save(QStringLiteral(CORVANE_PICTURES "/%1.png").arg(name)));
    return image;
}

} // namespace corvane
