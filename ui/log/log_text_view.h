#pragma once

#include "exec/operation_runner.h"
#include "ui/log/log_layout.h"

#include <QBasicTimer>
#include <QColor>
#include <QElapsedTimer>
#include <QPointer>
#include <QQuickPaintedItem>

#include <algorithm>

namespace corvane {

/// A log as one text that can be selected across its lines, always scrolled to the newest line when lines arrive.
///
/// Only the rows in sight are drawn, so that its cost does not grow with the log. While the mouse drags a selection the
/// text stands still and the newest line comes back into sight afterwards. What a screen reader asks of it is answered
/// in log_accessible.h.
class LogTextView : public QQuickPaintedItem {
    Q_OBJECT
    QML_NAMED_ELEMENT(LogCanvas)
    /// What is shown: an operation's lines, or else a text.
    Q_PROPERTY(corvane::OperationRunner *source READ source WRITE setSource NOTIFY sourceChanged)
    Q_PROPERTY(QString text READ text WRITE setText NOTIFY textChanged)
    /// What a screen reader calls it.
    Q_PROPERTY(QString label MEMBER m_label NOTIFY labelChanged)
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

    [[nodiscard]] const QString &label() const { return m_label; }
    [[nodiscard]] const QStringList &lines() const { return m_source ? m_source->lines() : m_text; }
    [[nodiscard]] const LogLayout &layout() const { return m_layout; }
    /// The caret, and where the selection that ends at it begins.
    [[nodiscard]] LogLayout::Place caret() const { return m_caret; }
    [[nodiscard]] LogLayout::Place anchor() const { return m_anchor; }
    void select(LogLayout::Place anchor, LogLayout::Place caret);
    [[nodiscard]] LogLayout::Place placeAt(QPointF point) const;
    /// Where the character behind the place is drawn.
    [[nodiscard]] QRectF areaOf(LogLayout::Place place) const;
    /// Scrolls no further than needed.
    void reveal(LogLayout::Place place);

    Q_INVOKABLE void scrollTo(double position);
    Q_INVOKABLE void copy() const;
    Q_INVOKABLE void selectAll();
    Q_INVOKABLE void deselect();

    void paint(QPainter *painter) override;

Q_SIGNALS:
    void sourceChanged();
    void textChanged();
    void labelChanged();
    void fontChanged();
    void colorsChanged();
    void scrolled();
    void contentChanged();
    /// Like OperationRunner::linesChanged; removed is -1 when the whole text was replaced.
    void linesMoved(int removed, int appended);
    void selectionChanged();

protected:
    void geometryChange(const QRectF &now, const QRectF &before) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseUngrabEvent() override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void timerEvent(QTimerEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    enum class Motion {
        NextSign,
        PreviousSign,
        NextWord,
        PreviousWord,
        NextRow,
        PreviousRow,
        NextPage,
        PreviousPage,
        LineStart,
        LineEnd,
        Start,
        End
    };
    struct KeyMotion;

    [[nodiscard]] double contentHeight() const;
    [[nodiscard]] int rowsInSight() const { return std::max(1, static_cast<int>(height() / m_rowHeight) - 1); }
    [[nodiscard]] LogLayout::Place end() const;
    [[nodiscard]] LogLayout::Place moved(Motion motion) const;
    [[nodiscard]] LogLayout::Place besideCaret(int direction, bool byWord) const;
    [[nodiscard]] LogLayout::Place rowsFromCaret(int rows) const;
    [[nodiscard]] bool moveByKey(const QKeyEvent &event);
    [[nodiscard]] bool isThirdClick(QPointF point) const;
    void dragTo(QPointF point);
    void endDrag();
    void layOut();
    void onLinesChanged(int removed, int appended);
    void onLinesReplaced();
    void showOtherLines();
    void scrollToEnd();
    void setTop(double top);
    void moveCaret(LogLayout::Place caret, bool extend);
    void paintRow(QPainter *painter, int row, double y) const;
    void paintSelection(QPainter *painter, LogLayout::Place start, const QString &shown, double y) const;

    QPointer<OperationRunner> m_source;
    QStringList m_text;
    QString m_label;
    QFont m_font;
    QColor m_color = Qt::black;
    QColor m_selectionColor = Qt::blue;
    QColor m_selectedTextColor = Qt::white;
    int m_padding = 6;
    double m_charWidth = 8;
    double m_rowHeight = 16;
    double m_baseline = 12;
    double m_top = 0;
    LogLayout m_layout;
    LogLayout::Place m_anchor;
    LogLayout::Place m_caret;
    /// The end of the text as it was laid out last: a caret that is there stays at the end.
    LogLayout::Place m_end;

    bool m_dragging = false;
    bool m_gestureIsOurs = false;
    bool m_linesCameMeanwhile = false;
    QPointF m_dragPoint;
    QBasicTimer m_dragTimer;
    QElapsedTimer m_sinceDoubleClick;
};

} // namespace corvane
