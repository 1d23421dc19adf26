#include "tests/ui/day_states.h"

#include "app/day_keeper.h"

#include <QDateTime>
#include <QFile>
#include <gtest/gtest.h>

#include <cmath>

namespace corvane::test {

namespace {

qint64 seconds() { return QDateTime::currentSecsSinceEpoch(); }

/// As a home asks: much in the evening, little at night.
qint64 askedAt(qint64 time)
{
    const double hour = QDateTime::fromSecsSinceEpoch(time).time().msecsSinceStartOfDay() / 3'600'000.0;
    const double wave = 0.5 - 0.5 * std::cos((hour - 3) / 24 * 6.283);
    return std::llround(30 + 260 * wave * wave + static_cast<double>(time / 600 % 7) * 9 +
                        (time / 600 % 23 == 0 ? 90 : 0));
}

} // namespace

SeenDay::SeenDay()
{
    const qint64 now = seconds();
    const auto span = [now](double from, double until, int state) {
        const auto ago = [now](double hours) { return QByteArray::number(now - std::llround(hours * 3600)); };
        return "span " + ago(from) + ' ' + ago(until) + ' ' + QByteArray::number(state) + '\n';
    };
    QByteArray text = "corvane day 1\n";
    text += span(30, 17.5, 1) + span(17.5, 10, 6) + span(10, 7, 1) + span(7, 6.4, 2) + span(6.4, 4.2, 1);
    text += span(4.2, 4.0, 3) + span(4.0, 2.5, 1) + span(2.5, 2.3, 4) + span(2.3, 1.5, 5) + span(1.5, 0, 1);
    for (qint64 slot = now / 600 * 600 - 86'400; slot <= now; slot += 600)
        text += "own " + QByteArray::number(slot) + " 40 0\n";
    QFile file(DayKeeper::path());
    EXPECT_TRUE(file.open(QIODevice::WriteOnly)) << qPrintable(file.errorString());
    file.write(text + "end\n");
}

void showHistory(AppModel &app, int hours)
{
    const qint64 running = seconds() / 600 * 600;
    PiholeHistory day;
    for (qint64 slot = running - 144 * 600; slot <= running + 600; slot += 600) {
        const bool counted = slot > running - hours * 3600 && slot <= running;
        const qint64 total = counted ? askedAt(slot) + 40 : 0;
        day << PiholeSlot{slot, total, total * (15 + slot / 600 % 11) / 100};
    }
    app.setHistory(day);
    app.setTopBlocked(PiholeTopBlocked{{{QStringLiteral("app-measurement.com"), 1204},
                                        {QStringLiteral("doubleclick.net"), 867},
                                        {QStringLiteral("graph.facebook.com"), 412},
                                        {QStringLiteral("incoming.telemetry.mozilla.org"), 388},
                                        {QStringLiteral("a-very-long-name-of-a-tracker.eu-central-1.example.net"), 97}},
                                       false});
}

} // namespace corvane::test
