#pragma once

#include "app/published.h"
#include "exec/line_splitter.h"
#include "exec/operation_runner.h"

#include <QObject>

namespace corvane {

/// What a run of Pi-hole's block lists prints, as lines, and how far it has come.
class ListRun : public QObject {
    Q_OBJECT

    /// One line for the user; empty while none is under way.
    CORVANE_PUBLISHED(ListRun, QString, progress, setProgress, QString())
    /// There has been a run, so that its lines can be read.
    CORVANE_PUBLISHED(ListRun, bool, printed, setPrinted, false)
    Q_PROPERTY(corvane::OperationRunner *log READ log CONSTANT)

public:
    ListRun();

    [[nodiscard]] OperationRunner *log() { return &m_log; }

    /// `lists`: how many will be fetched; 0 when nobody knows.
    void begin(int lists);
    void hear(const QByteArray &printed) { m_splitter.feed(printed); }
    void end();

private:
    void take(const QString &line);

    OperationRunner m_log{[](const QString &) { return QString(); }};
    LineSplitter m_splitter{[this](const QString &line) { take(line); }};
    int m_lists = 0;
    int m_fetched = 0;
};

} // namespace corvane
