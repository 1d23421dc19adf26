#include "tests/ui/screen.h"

#include <QApplication>
#include <QDir>
#include <QSignalSpy>
#include <QStyleHints>
#include <QTest>

namespace corvane::test {

namespace {

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
    , m_looks(m_app, m_appearance)
    , m_commands(m_app, m_workspace)
    , m_windows([this] { return std::make_unique<ScreenEngine>(m_app, m_looks, m_commands); }, m_dialogs, m_workspace,
                m_settings)
    , m_filePanels(m_dialogs, m_windows)
{
    QApplication::setPalette(paletteOf(false));
    EXPECT_TRUE(QTest::qWaitFor([this] { return m_app.passwordKnown(); }));
}

Screen::~Screen() = default;

void Screen::TearDown()
{
    settle();
    EXPECT_TRUE(QtWarnings::all().isEmpty()) << qPrintable(QtWarnings::all().join(u'\n'));
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

void Screen::openSettings()
{
    m_windows.openSettings();
    lookAt(m_windows.settings());
    ASSERT_TRUE(QTest::qWaitForWindowExposed(window()));
}

void Screen::settle()
{
    EXPECT_TRUE(QTest::qWaitFor([this] { return m_app.busy().isEmpty() || m_front; }));
    QTest::qWait(20);
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

void Screen::bothPictures(const QString &name)
{
    setDark(false);
    const QImage light = picture(name + QStringLiteral("-light"));
    setDark(true);
    const QImage dark = picture(name + QStringLiteral("-dark"));
    setDark(false);
    EXPECT_NE(light, dark);
}

} // namespace corvane::test
