#pragma once

#include "exec/operation_runner.h"
#include "ui/log_layout.h"

#include <QColor>
#include <QPointer>
#include <QQuickPaintedItem>

namespace corvane {

/// A log as one text that can be selected across its lines, always scrolled to the newest line when lines arrive.
///
/// Only the rows in sight are drawn, so that its cost does not grow with the log.
class LogTextView : public QQuickPaintedItem {
    Q_OBJECT
    QML_NAMED_ELEMENT(LogCanvas)
    /// What is shown: an operation's lines, or else a text.
    Q_PROPERTY(corvane::OperationRunner *source READ source WRITE setSource NOTIFY sourceChanged)
    Q_PROPERTY(QString text READ text WRITE setText NOTIFY textChanged)
    Q_PROPERTY(QFont font READ font WRITE setFont NOTIFY fontChanged)
    Q_PROPERTY(QColor color MEMBER m_color NOTIFY colorsChanged)
    Q_PROPERTY(QColor selectionColor MEMBER m_selectionColor NOTIFY colorsChanged)
    Q_PROPERTY(QColor selectedTextColor MEMBER m_selectedTextColor NOTIFY colorsChanged)
    Q_PROPERTY(int padding MEMBER m_padding NOTIFY colorsChanged)
    /// Of a scroll bar: the part of the whole above the view and in sight, each from 0 to 1.
    Q_PROPERTY(double position READ position NOTIFY scrolled)
    Q_PROPERTY(double size READ pageSize NOTIFY scrolled)
    Q_PROPERTY(bool empty READ empty NOTIFY contentChanged)
    Q_PROPERTY(QString selectedText READ selectedText NOTIFY selectionChanged)
    /// What a screen reader says: what is selected, or else the line of the caret.
    Q_PROPERTY(QString spokenText READ spokenText NOTIFY selectionChanged)

public:
    explicit LogTextView(QQuickItem *parent = nullptr);

    [[nodiscard]] OperationRunner *source() const { return m_source; }
    void setSource(OperationRunner *source);
    [[nodiscard]] QString text() const { return m_text.join(u'\n'); }
    void setText(const QString &text);
    [[nodiscard]] const QFont &font() const { return m_font; }
    void setFont(const QFont &font);

    [[nodiscard]] double position() const;
    [[nodiscard]] double pageSize() const;
    [[nodiscard]] bool empty() const { return lines().isEmpty(); }
    [[nodiscard]] QString selectedText() const;
    [[nodiscard]] QString spokenText() const;

    Q_INVOKABLE void scrollTo(double position);
    Q_INVOKABLE void copy() const;
    Q_INVOKABLE void selectAll();

    void paint(QPainter *painter) override;

Q_SIGNALS:
    void sourceChanged();
    void textChanged();
    void fontChanged();
    void colorsChanged();
    void scrolled();
    void contentChanged();
    void selectionChanged();

protected:
    void geometryChange(const QRectF &now, const QRectF &before) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    [[nodiscard]] const QStringList &lines() const { return m_source ? m_source->lines() : m_text; }
    [[nodiscard]] double contentHeight() const;
    [[nodiscard]] LogLayout::Place placeAt(QPointF point) const;
    [[nodiscard]] LogLayout::Place end() const;
    [[nodiscard]] LogLayout::Place moved(int key, bool byWord) const;
    [[nodiscard]] bool scrollByKey(int key);
    void layOut();
    void onLinesChanged(int removed, int appended);
    void scrollToEnd();
    void setTop(double top);
    void moveCaret(LogLayout::Place caret, bool extend);
    void showCaret();
    void paintRow(QPainter *painter, int row, double y) const;

    QPointer<OperationRunner> m_source;
    QStringList m_text;
    QFont m_font;
    QColor m_color = Qt::black;
    QColor m_selectionColor = Qt::blue;
    QColor m_selectedTextColor = Qt::white;
    int m_padding = 6;
    double m_charWidth = 8;
    double m_rowHeight = 16;
    double m_top = 0;
    LogLayout m_layout;
    LogLayout::Place m_anchor;
    LogLayout::Place m_caret;
};

} // namespace corvane
