#pragma once

#include <QPointer>
#include <QQuickItem>

namespace corvane {

/// The text that a context menu is open for, whatever shows it: what can be done with it, and the doing.
class TextInHand : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QQuickItem *item READ item WRITE setItem NOTIFY itemChanged)
    // As they were when the text was taken in hand.
    Q_PROPERTY(bool editable READ editable NOTIFY itemChanged)
    Q_PROPERTY(bool selected READ selected NOTIFY itemChanged)
    Q_PROPERTY(bool canPaste READ canPaste NOTIFY itemChanged)

public:
    [[nodiscard]] QQuickItem *item() const { return m_item; }
    void setItem(QQuickItem *item);

    [[nodiscard]] bool editable() const;
    [[nodiscard]] bool selected() const;
    [[nodiscard]] bool canPaste() const;

    Q_INVOKABLE void cut() const { tell("cut"); }
    /// Copies what is selected, or all of it.
    Q_INVOKABLE void copy() const;
    Q_INVOKABLE void paste() const { tell("paste"); }
    Q_INVOKABLE void selectAll() const;

Q_SIGNALS:
    void itemChanged();

private:
    void tell(const char *what) const;

    QPointer<QQuickItem> m_item;
};

} // namespace corvane
