#pragma once

#include <QPointer>
#include <QQuickItem>

class QQmlEngine;

namespace corvane {

/// The text that the context menu is open for, whatever shows it: what can be done with it, and the doing. One menu
/// serves all texts and is made when the first one is asked for.
class TextInHand : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(QQuickItem *item READ item NOTIFY itemChanged)
    // As they were when the text was taken in hand.
    Q_PROPERTY(bool editable READ editable NOTIFY itemChanged)
    Q_PROPERTY(bool selected READ selected NOTIFY itemChanged)
    Q_PROPERTY(bool canPaste READ canPaste NOTIFY itemChanged)

public:
    [[nodiscard]] QQuickItem *item() const { return m_item; }
    [[nodiscard]] bool editable() const;
    [[nodiscard]] bool selected() const;
    [[nodiscard]] bool canPaste() const;

    /// Opens the menu at a place in the item.
    Q_INVOKABLE void openMenu(QQuickItem *item, QPointF place);
    /// Opens it below the item, for a user without a mouse.
    Q_INVOKABLE void openMenuBelow(QQuickItem *item);
    /// The menu has closed.
    Q_INVOKABLE void letGo();

    Q_INVOKABLE void cut() const { tell("cut"); }
    /// Copies what is selected, or all of it.
    Q_INVOKABLE void copy() const;
    Q_INVOKABLE void paste() const { tell("paste"); }
    Q_INVOKABLE void selectAll();

Q_SIGNALS:
    void itemChanged();

private:
    void tell(const char *what) const;

    QPointer<QQuickItem> m_item;
    QPointer<QObject> m_menu;
    /// Whether the keyboard speaks to the text when the menu has closed.
    bool m_hasFocus = false;
};

} // namespace corvane
