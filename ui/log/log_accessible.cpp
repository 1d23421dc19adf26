#include "ui/log/log_accessible.h"

#include "ui/log/log_text_view.h"

#include <QAccessibleObject>
#include <QQuickWindow>
#include <QTextBoundaryFinder>
#include <QTimer>

#include <algorithm>

namespace corvane {

namespace {

using Place = LogLayout::Place;

/// Two offsets around a piece of text.
struct Range {
    int start = 0;
    int end = 0;
};

/// The piece of a line around the column.
Range pieceOf(const QString &line, int column, QTextBoundaryFinder::BoundaryType type)
{
    QTextBoundaryFinder finder(type, line);
    finder.setPosition(std::min(column + 1, static_cast<int>(line.size())));
    const int start = static_cast<int>(finder.toPreviousBoundary());
    const int end = static_cast<int>(finder.toNextBoundary());
    return {std::max(0, start), end < 0 ? static_cast<int>(line.size()) : end};
}

/// What a screen reader sees of a log. It exists only once one has asked.
class LogAccessible final : public QAccessibleObject, public QAccessibleTextInterface {
public:
    explicit LogAccessible(LogTextView *view);

    void *interface_cast(QAccessible::InterfaceType type) override
    {
        return type == QAccessible::TextInterface ? static_cast<QAccessibleTextInterface *>(this) : nullptr;
    }

    [[nodiscard]] QAccessibleInterface *parent() const override;
    [[nodiscard]] QAccessibleInterface *child(int) const override { return nullptr; }
    [[nodiscard]] int childCount() const override { return 0; }
    [[nodiscard]] int indexOfChild(const QAccessibleInterface *) const override { return -1; }
    [[nodiscard]] QWindow *window() const override { return view().window(); }
    [[nodiscard]] QRect rect() const override { return onScreen(QRectF({}, view().size())); }
    [[nodiscard]] QAccessible::Role role() const override { return QAccessible::EditableText; }
    [[nodiscard]] QAccessible::State state() const override;
    [[nodiscard]] QString text(QAccessible::Text kind) const override
    {
        return kind == QAccessible::Name ? view().label() : QString();
    }

    [[nodiscard]] int selectionCount() const override { return view().anchor() == view().caret() ? 0 : 1; }
    void selection(int index, int *start, int *end) const override;
    void addSelection(int start, int end) override { setSelection(0, start, end); }
    void removeSelection(int) override { view().select(view().caret(), view().caret()); }
    void setSelection(int, int start, int end) override { view().select(placeAt(start), placeAt(end)); }
    [[nodiscard]] int cursorPosition() const override { return offsetOf(lines(), view().caret()); }
    void setCursorPosition(int position) override { setSelection(0, position, position); }

    [[nodiscard]] int characterCount() const override { return sizeOf(lines()); }
    [[nodiscard]] QString text(int start, int end) const override
    {
        return textBetween(lines(), placeAt(start), placeAt(end));
    }
    [[nodiscard]] QString textBeforeOffset(int offset, QAccessible::TextBoundaryType boundary, int *start,
                                           int *end) const override;
    [[nodiscard]] QString textAfterOffset(int offset, QAccessible::TextBoundaryType boundary, int *start,
                                          int *end) const override;
    [[nodiscard]] QString textAtOffset(int offset, QAccessible::TextBoundaryType boundary, int *start,
                                       int *end) const override;

    [[nodiscard]] QRect characterRect(int offset) const override { return onScreen(view().areaOf(placeAt(offset))); }
    [[nodiscard]] int offsetAtPoint(const QPoint &point) const override
    {
        return offsetOf(lines(), view().placeAt(view().mapFromGlobal(point)));
    }
    void scrollToSubstring(int start, int) override { view().reveal(placeAt(start)); }
    [[nodiscard]] QString attributes(int, int *start, int *end) const override
    {
        *start = 0;
        *end = characterCount();
        return {};
    }

private:
    [[nodiscard]] LogTextView &view() const { return *static_cast<LogTextView *>(object()); }
    [[nodiscard]] const QStringList &lines() const { return view().lines(); }
    [[nodiscard]] Place placeAt(int offset) const { return placeOf(lines(), offset < 0 ? characterCount() : offset); }
    [[nodiscard]] QRect onScreen(const QRectF &area) const;
    [[nodiscard]] Range around(int offset, QAccessible::TextBoundaryType boundary) const;
    [[nodiscard]] QString tell(Range range, int *start, int *end) const;
    void onLinesMoved(int removed, int appended);
    void tellLines();
    void tellCaret();

    QObject m_context;
    QTimer m_pause;
    /// The lines of which a screen reader knows, and how many at their front are gone and at the end are new.
    QStringList m_told;
    qint64 m_removed = 0;
    qint64 m_appended = 0;
};

constexpr int kPause = 250; // milliseconds between two tellings of new lines

LogAccessible::LogAccessible(LogTextView *view)
    : QAccessibleObject(view)
    , m_told(view->lines())
{
    m_pause.setSingleShot(true);
    m_pause.setInterval(kPause);
    QObject::connect(&m_pause, &QTimer::timeout, &m_context, [this] { tellLines(); });
    QObject::connect(view, &LogTextView::linesMoved, &m_context,
                     [this](int removed, int appended) { onLinesMoved(removed, appended); });
    QObject::connect(view, &LogTextView::selectionChanged, &m_context, [this] { tellCaret(); });
}

QAccessibleInterface *LogAccessible::parent() const
{
    for (QQuickItem *item = view().parentItem(); item; item = item->parentItem()) {
        if (QAccessibleInterface *found = QAccessible::queryAccessibleInterface(item)) return found;
    }
    return QAccessible::queryAccessibleInterface(view().window());
}

QAccessible::State LogAccessible::state() const
{
    QAccessible::State state;
    state.readOnly = true;
    state.multiLine = true;
    state.selectableText = true;
    state.focusable = true;
    state.focused = view().hasActiveFocus();
    state.disabled = !view().isEnabled();
    state.invisible = !view().isVisible() || !view().window() || !view().window()->isVisible();
    state.offscreen = !state.invisible && !view().window()->geometry().intersects(rect());
    return state;
}

QRect LogAccessible::onScreen(const QRectF &area) const
{
    if (!view().window()) return {};
    const QRect inWindow = view().mapRectToScene(area).toRect();
    return {view().window()->mapToGlobal(inWindow.topLeft()), inWindow.size()};
}

void LogAccessible::selection(int index, int *start, int *end) const
{
    const auto [from, to] = std::minmax({view().anchor(), view().caret()});
    *start = index == 0 ? offsetOf(lines(), from) : 0;
    *end = index == 0 ? offsetOf(lines(), to) : 0;
}

// Qt's own way would join the whole log for every word that is asked for.
Range LogAccessible::around(int offset, QAccessible::TextBoundaryType boundary) const
{
    if (lines().isEmpty() || boundary == QAccessible::NoBoundary) return {0, characterCount()};
    const Place place = placeAt(offset);
    const QString &line = lines().at(place.line);
    const int size = static_cast<int>(line.size());
    const int lineStart = offsetOf(lines(), {place.line, 0});
    const int withBreak = place.line + 1 < lines().size() ? size + 1 : size;
    Range range{0, withBreak};
    if (boundary == QAccessible::LineBoundary) {
        const LogLayout &layout = view().layout();
        const int first = layout.start(layout.rowOf(place)).column;
        const int end = first + layout.columns();
        range = {first, end < size ? end : withBreak};
    } else if (boundary != QAccessible::ParagraphBoundary) {
        const auto type = boundary == QAccessible::CharBoundary   ? QTextBoundaryFinder::Grapheme
                          : boundary == QAccessible::WordBoundary ? QTextBoundaryFinder::Word
                                                                  : QTextBoundaryFinder::Sentence;
        range = place.column < size ? pieceOf(line, place.column, type) : Range{size, withBreak};
    }
    return {lineStart + range.start, lineStart + range.end};
}

QString LogAccessible::tell(Range range, int *start, int *end) const
{
    *start = range.start;
    *end = range.end;
    return text(range.start, range.end);
}

QString LogAccessible::textBeforeOffset(int offset, QAccessible::TextBoundaryType boundary, int *start, int *end) const
{
    const Range here = around(offset, boundary);
    return tell(here.start > 0 ? around(here.start - 1, boundary) : Range(), start, end);
}

QString LogAccessible::textAfterOffset(int offset, QAccessible::TextBoundaryType boundary, int *start, int *end) const
{
    const Range here = around(offset, boundary);
    const int all = characterCount();
    return tell(here.end < all ? around(here.end, boundary) : Range{all, all}, start, end);
}

QString LogAccessible::textAtOffset(int offset, QAccessible::TextBoundaryType boundary, int *start, int *end) const
{
    return tell(around(offset, boundary), start, end);
}

void LogAccessible::onLinesMoved(int removed, int appended)
{
    m_removed = removed < 0 ? m_told.size() : m_removed + removed;
    m_appended = removed < 0 ? appended : m_appended + appended;
    if (!m_pause.isActive()) m_pause.start();
}

// A log may change sixty times a second; a screen reader hears of it four times.
void LogAccessible::tellLines()
{
    const QStringList before = std::exchange(m_told, QAccessible::isActive() ? lines() : QStringList());
    const qsizetype removed = std::min<qsizetype>(std::exchange(m_removed, 0), before.size());
    const qsizetype appended = std::min<qsizetype>(std::exchange(m_appended, 0), m_told.size());
    if (!QAccessible::isActive()) return;
    const auto ended = [](const QStringList &some) { return some.join(u'\n') + u'\n'; };
    if (removed > 0) {
        QAccessibleTextRemoveEvent event(object(), 0, ended(before.first(removed)));
        QAccessible::updateAccessibility(&event);
    }
    if (appended > 0) {
        const int line = static_cast<int>(m_told.size() - appended);
        QAccessibleTextInsertEvent event(object(), offsetOf(m_told, {line, 0}), ended(m_told.last(appended)));
        QAccessible::updateAccessibility(&event);
    }
}

void LogAccessible::tellCaret()
{
    if (!QAccessible::isActive()) return;
    const auto [from, to] = std::minmax({view().anchor(), view().caret()});
    QAccessibleTextSelectionEvent event(object(), offsetOf(lines(), from), offsetOf(lines(), to));
    event.setCursorPosition(cursorPosition());
    QAccessible::updateAccessibility(&event);
    QAccessibleTextCursorEvent moved(object(), cursorPosition());
    QAccessible::updateAccessibility(&moved);
}

QAccessibleInterface *makeAccessible(const QString &type, QObject *object)
{
    if (type != QLatin1String(LogTextView::staticMetaObject.className())) return nullptr;
    return new LogAccessible(static_cast<LogTextView *>(object));
}

} // namespace

void makeLogsAccessible() { QAccessible::installFactory(makeAccessible); }

} // namespace corvane
