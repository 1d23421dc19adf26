#pragma once

#include "app/settings_store.h"

#include <QList>
#include <QRect>
#include <QWindow>

namespace corvane {

/// Keeps where the main window stood and how large it was, also over the end of the program.
class WindowPlace {
public:
    explicit WindowPlace(SettingsStore &store);

    /// Puts a window that is not shown yet where it stood; it stays as it is when nothing was kept.
    void restore(QWindow &window) const;
    void keep(const QWindow &window);

private:
    SettingsStore &m_store;
};

/// A kept frame as it can be used now: no smaller than the minimum, no larger than its screen and wholly on it; on the
/// first screen when its own is gone. The screens are what of each a window may cover.
[[nodiscard]] QRect placeOn(const QList<QRect> &screens, QRect kept, const QSize &minimum);

/// "x y width height"; absent for anything else.
[[nodiscard]] std::optional<QRect> frameFromText(const QString &text);
[[nodiscard]] QString textFromFrame(const QRect &frame);

} // namespace corvane
