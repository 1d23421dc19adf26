#pragma once

#include <QImage>
#include <QString>

#include <functional>
#include <memory>

class QMenu;

namespace corvane {

/// Corvane's item in the menu bar: a picture, a spoken name and a menu.
class StatusItem {
public:
    virtual ~StatusItem() = default;

    /// Draws the picture at the given scale (device pixels per point); it is shown in its own colours.
    using Picture = std::function<QImage(double scale)>;

    virtual void setPicture(const Picture &picture) = 0;
    /// What a screen reader says for the picture.
    virtual void setSpokenName(const QString &name) = 0;
    /// The menu must outlive the item.
    virtual void setMenu(QMenu *menu) = 0;
};

/// The status item of this system, shown at once.
[[nodiscard]] std::unique_ptr<StatusItem> systemStatusItem();

} // namespace corvane
