#pragma once

#include "app/day_record.h"
#include "app/flow.h"

#include <QObject>
#include <QString>

#include <memory>

namespace corvane {

/// Keeps the record of the day in a file of its own, so that it outlives Corvane.
class DayKeeper : public QObject {
    Q_OBJECT

public:
    /// Begins to read the file.
    DayKeeper();
    /// Writes what the file does not hold yet.
    ~DayKeeper() override;

    [[nodiscard]] static QString path();

    [[nodiscard]] const DayRecord &record() const { return m_record; }
    /// Why the record could not be kept, as a sentence; else empty.
    [[nodiscard]] const QString &trouble() const { return m_trouble; }

    void note(Protection state);
    /// One question of Corvane's own that Pi-hole answered.
    void countOwn(bool blocked = false);

Q_SIGNALS:
    void changed();

private:
    class File;

    [[nodiscard]] Flow<> load();
    [[nodiscard]] Flow<> save();

    std::shared_ptr<File> m_file;
    DayRecord m_record;
    QString m_trouble;
    bool m_loaded = false;
    bool m_saving = false;
    bool m_unsaved = false;
    /// The slot in which the file was written last.
    qint64 m_savedSlot = 0;
};

} // namespace corvane
