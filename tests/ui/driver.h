#pragma once

#include <QQuickItem>
#include <QQuickWindow>

namespace corvane::test {

/// A person at a window: looks, reads, clicks and types.
class Driver {
public:
    Driver() = default;
    virtual ~Driver() = default;
    Driver(const Driver &) = delete;
    Driver &operator=(const Driver &) = delete;

protected:
    /// The window in front.
    [[nodiscard]] virtual QQuickWindow *window() const = 0;

    [[nodiscard]] QQuickItem *find(const QString &name) const;
    /// Whether the item is there and shown.
    [[nodiscard]] bool shows(const QString &name) const;
    [[nodiscard]] bool enabled(const QString &name) const;
    [[nodiscard]] QString textOf(const QString &name) const;
    /// All texts in sight, and those that are scrolled out of it.
    [[nodiscard]] QStringList texts() const;
    [[nodiscard]] bool reads(const QString &text) const;

    /// Clicks in the middle of the item, scrolled into sight.
    void click(const QString &name);
    void click(QQuickItem &item);
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    void type(const QString &text);
    [[nodiscard]] QString focused() const;

private:
    void layOut();
};

/// All items below `root`, itself included, in reading order.
[[nodiscard]] QList<QQuickItem *> itemsOf(QQuickItem *root);
[[nodiscard]] bool inSight(const QQuickItem *item);

} // namespace corvane::test
