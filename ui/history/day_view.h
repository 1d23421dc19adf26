#pragma once

#include "app/app_model.h"
#include "ui/history/day_texts.h"
#include "ui/row_list.h"

#include <QObject>
#include <QPointer>
#include <QtQml/qqmlregistration.h>

namespace corvane {

/// A mark of the hours, and its place from 0 to 1 on the axis.
class AxisMark {
    Q_GADGET
    QML_NAMED_ELEMENT(axisMark)
    Q_PROPERTY(double place MEMBER place CONSTANT)
    Q_PROPERTY(QString label MEMBER label CONSTANT)

public:
    double place = 0;
    QString label;
};

/// A state of the band, by its number, and what the legend calls it.
class BandMeaning {
    Q_GADGET
    QML_NAMED_ELEMENT(bandMeaning)
    Q_PROPERTY(int protection MEMBER protection CONSTANT)
    Q_PROPERTY(QString label MEMBER label CONSTANT)

public:
    int protection = 0;
    QString label;

    bool operator==(const BandMeaning &) const = default;
};

/// What the picture of the last 24 hours shows and says; Pi-hole is asked for it for as long as it is there.
class DayView : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(DayView)
    Q_PROPERTY(corvane::AppModel *app READ app WRITE setApp NOTIFY appChanged REQUIRED)
    /// What all of it comes to, and how the Mac was protected.
    Q_PROPERTY(QString text READ text NOTIFY changed)
    Q_PROPERTY(QString protection READ protection NOTIFY changed)
    Q_PROPERTY(QString missing READ missing NOTIFY changed)
    /// What is left out, and what is not as it should be.
    Q_PROPERTY(QString leftOut READ leftOut NOTIFY changed)
    Q_PROPERTY(QString trouble READ trouble NOTIFY changed)
    Q_PROPERTY(double top READ top NOTIFY changed)
    /// The states that occur, as the legend names them.
    Q_PROPERTY(QList<corvane::BandMeaning> meanings READ meanings NOTIFY meaningsChanged)
    Q_PROPERTY(corvane::RowList *names READ names CONSTANT)
    Q_PROPERTY(QString missingNames READ missingNames NOTIFY changed)

public:
    explicit DayView(QObject *parent = nullptr);
    ~DayView() override;

    [[nodiscard]] AppModel *app() const { return m_app; }
    void setApp(AppModel *app);

    [[nodiscard]] QString text() const;
    [[nodiscard]] QString protection() const;
    [[nodiscard]] QString missing() const;
    [[nodiscard]] QString leftOut() const;
    [[nodiscard]] QString trouble() const;
    [[nodiscard]] double top() const { return static_cast<double>(axisTop(m_bars)); }
    [[nodiscard]] const QList<BandMeaning> &meanings() const { return m_meanings; }
    [[nodiscard]] RowList *names() { return &m_names; }
    [[nodiscard]] QString missingNames() const;

    [[nodiscard]] const DayWindow &window() const { return m_window; }
    [[nodiscard]] const QList<DayBar> &bars() const { return m_bars; }
    [[nodiscard]] const QList<DaySpan> &spans() const { return m_spans; }

    /// Round hours for an axis of that length, not closer to one another than the gap.
    Q_INVOKABLE [[nodiscard]] QList<corvane::AxisMark> marks(double length, double smallestGap) const;
    /// What is known about one slot of the picture.
    Q_INVOKABLE [[nodiscard]] QString slotText(int slot) const;
    Q_INVOKABLE [[nodiscard]] QString number(qint64 value) const;

Q_SIGNALS:
    void appChanged();
    void changed();
    void windowChanged();
    void meaningsChanged();

private:
    void update();
    void showNames();
    void showMeanings();
    [[nodiscard]] DaySource source() const;

    QPointer<AppModel> m_app;
    DayWindow m_window;
    QList<DayBar> m_bars;
    QList<DaySpan> m_spans;
    QList<BandMeaning> m_meanings;
    RowList m_names;
    LocalTime m_local;
};

} // namespace corvane
