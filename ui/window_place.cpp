#include "ui/window_place.h"

#include <QGuiApplication>
#include <QScreen>

#include <algorithm>

namespace corvane {

namespace {

const QString kKey = QStringLiteral("mainWindowFrame");
/// Is above the frame that is kept, which is the window without its decoration.
constexpr int kTitleBar = 28;

int shared(const QRect &one, const QRect &other)
{
    const QRect common = one & other;
    return common.width() * common.height();
}

QList<QRect> screens()
{
    QList<QRect> areas;
    for (const QScreen *screen : QGuiApplication::screens())
        areas << screen->availableGeometry().adjusted(0, kTitleBar, 0, 0);
    return areas;
}

} // namespace

WindowPlace::WindowPlace(SettingsStore &store)
    : m_store(store)
{}

void WindowPlace::restore(QWindow &window) const
{
    const std::optional<QRect> kept = frameFromText(m_store.value(kKey).toString());
    if (!kept) return;
    const QRect frame = placeOn(screens(), *kept, window.minimumSize());
    window.setGeometry(frame);
}

void WindowPlace::keep(const QWindow &window)
{
    const Qt::WindowStates states = window.windowStates();
    if (!window.isVisible() || states.testAnyFlags(Qt::WindowMinimized | Qt::WindowFullScreen)) return;
    m_store.setValue(kKey, textFromFrame(window.geometry()));
}

QRect placeOn(const QList<QRect> &screens, QRect kept, const QSize &minimum)
{
    if (screens.isEmpty()) return kept;
    const auto most = std::ranges::max_element(screens, {}, [&](const QRect &screen) { return shared(screen, kept); });
    const QRect screen = shared(*most, kept) > 0 ? *most : screens.first();
    kept.setSize(kept.size().boundedTo(screen.size()).expandedTo(minimum));
    kept.moveTo(std::clamp(kept.x(), screen.x(), std::max(screen.x(), screen.right() + 1 - kept.width())),
                std::clamp(kept.y(), screen.y(), std::max(screen.y(), screen.bottom() + 1 - kept.height())));
    return kept;
}

std::optional<QRect> frameFromText(const QString &text)
{
    constexpr int kFarthest = 100'000; // points
    QList<int> numbers;
    for (const QString &part : text.split(u' ')) {
        bool isNumber = false;
        const int number = part.toInt(&isNumber);
        if (!isNumber || std::abs(number) > kFarthest) return std::nullopt;
        numbers << number;
    }
    if (numbers.size() != 4 || numbers.at(2) <= 0 || numbers.at(3) <= 0) return std::nullopt;
    return QRect(numbers.at(0), numbers.at(1), numbers.at(2), numbers.at(3));
}

QString textFromFrame(const QRect &frame)
{
    return QStringLiteral("%1 %2 %3 %4").arg(frame.x()).arg(frame.y()).arg(frame.width()).arg(frame.height());
}

} // namespace corvane
