#include "ui/history/day_view.h"

#include <QDateTime>
#include <QLocale>

#include <algorithm>
#include <utility>

namespace corvane {

DayView::DayView(QObject *parent)
    : QObject(parent)
    , m_local(LocalTime::ofThisMac())
{
    update();
}

DayView::~DayView()
{
    if (m_app) m_app->showHistory(false);
}

void DayView::setApp(AppModel *app)
{
    if (app == m_app) return;
    if (m_app) m_app->disconnect(this);
    m_app = app;
    Q_EMIT appChanged();
    if (!m_app) return;
    for (const auto signal : {&AppModel::historyChanged, &AppModel::historyProblemChanged, &AppModel::answeringChanged,
                              &AppModel::statusCheckedChanged})
        connect(m_app, signal, this, &DayView::update);
    connect(m_app, &AppModel::topBlockedChanged, this, &DayView::showNames);
    connect(&m_app->day(), &DayKeeper::changed, this, &DayView::update);
    update();
    showNames();
    m_app->showHistory(true);
}

void DayView::update()
{
    const DayWindow before = std::exchange(m_window, DayWindow::at(QDateTime::currentSecsSinceEpoch()));
    const DayRecord record = m_app ? m_app->day().record() : DayRecord();
    m_bars = dayBars(m_window, m_app ? m_app->history().value_or(PiholeHistory()) : PiholeHistory(), record);
    m_spans = record.spans();
    showMeanings();
    if (before.from != m_window.from) Q_EMIT windowChanged();
    Q_EMIT changed();
}

void DayView::showNames()
{
    QList<Row> rows;
    const PiholeTopBlocked top = m_app->topBlocked().value_or(PiholeTopBlocked());
    for (const NameCount &each : top.names)
        rows << Row{.id = each.name, .badge = {}, .title = each.name, .detail = number(each.count)};
    m_names.show(rows);
    Q_EMIT changed();
}

void DayView::showMeanings()
{
    QList<BandMeaning> meanings;
    const ProtectionTimes times = timesBetween(m_spans, m_window.from, m_window.now);
    for (auto state = times.keyBegin(); state != times.keyEnd(); ++state)
        if (*state != Protection::Unknown) meanings << BandMeaning{static_cast<int>(*state), protectionLabel(*state)};
    if (meanings == m_meanings) return;
    m_meanings = meanings;
    Q_EMIT meaningsChanged();
}

DaySource DayView::source() const
{
    if (!m_app) return {};
    return {.checked = m_app->statusChecked(),
            .answering = m_app->answering(),
            .read = m_app->history().has_value(),
            .problem = m_app->historyProblem()};
}

QString DayView::text() const { return source().read ? dayText(m_window, m_bars, m_local) : QString(); }

QString DayView::protection() const { return protectionText(timesBetween(m_spans, m_window.from, m_window.now)); }

QString DayView::missing() const { return missingText(source()); }

QString DayView::leftOut() const
{
    return m_app && source().read ? ownText(ownQuestions(m_window, m_app->day().record())) : QString();
}

QString DayView::trouble() const
{
    const QString stale = staleText(source());
    return stale.isEmpty() && m_app ? m_app->day().trouble() : stale;
}

QString DayView::missingNames() const { return m_app ? missingNamesText(m_app->topBlocked()) : QString(); }

QList<AxisMark> DayView::marks(double length, double smallestGap) const
{
    const auto seconds = static_cast<double>(m_window.until - m_window.from);
    const auto gap = static_cast<qint64>(smallestGap / std::max(1.0, length) * seconds);
    QList<AxisMark> marks;
    for (const HourTick &tick : hourTicks(m_window, gap, m_local))
        marks << AxisMark{static_cast<double>(tick.time - m_window.from) / seconds, tick.label};
    return marks;
}

QString DayView::slotText(int slot) const
{
    if (slot < 0 || slot >= m_bars.size()) return {};
    return corvane::slotText(m_window, slot, m_bars.at(slot), m_spans, m_local);
}

QString DayView::number(qint64 value) const { return QLocale(QLocale::English).toString(value); }

} // namespace corvane
