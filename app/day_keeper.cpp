#include "app/day_keeper.h"

#include "app/flow.h"
#include "exec/app_paths.h"
#include "exec/background.h"
#include "exec/replace_file.h"

#include <QDateTime>
#include <QFile>

#include <mutex>

namespace corvane {

namespace {

using Written = std::expected<void, QString>;

constexpr qint64 kLargestFile = 512 << 10; // bytes; a full record takes some 150 KB

/// What cannot be read as a record is no loss worth a question: a new record begins.
DayRecord readNow(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || file.isSequential() || file.size() > kLargestFile) return {};
    return DayRecord::fromBytes(file.read(kLargestFile)).value_or(DayRecord());
}

qint64 seconds() { return QDateTime::currentSecsSinceEpoch(); }

} // namespace

/// The file, in which nothing older ever replaces what is newer, whichever thread comes first.
class DayKeeper::File {
public:
    /// The place of the next content among all. On the main thread.
    [[nodiscard]] int nextTurn() { return ++m_turns; }

    [[nodiscard]] Written write(int turn, const QByteArray &bytes)
    {
        const std::scoped_lock lock(m_mutex);
        if (turn < m_written) return {};
        m_written = turn;
        return replacePrivateFile(path(), bytes);
    }

private:
    int m_turns = 0;
    std::mutex m_mutex;
    int m_written = 0;
};

DayKeeper::DayKeeper()
    : m_file(std::make_shared<File>())
{
    launch(load());
}

DayKeeper::~DayKeeper()
{
    if (m_loaded && m_unsaved) static_cast<void>(m_file->write(m_file->nextTurn(), m_record.toBytes()));
}

QString DayKeeper::path() { return AppPaths::supportDir().filePath(QStringLiteral("day.txt")); }

Flow<> DayKeeper::load()
{
    const std::function<DayRecord()> read = [] { return readNow(path()); };
    BackgroundWork<DayRecord> work(read);
    const DayRecord before = co_await work;
    m_record = before.continuedBy(m_record);
    m_loaded = true;
    Q_EMIT changed();
}

void DayKeeper::note(Protection state)
{
    const qsizetype spans = m_record.spans().size();
    const qint64 now = seconds();
    m_record.note(now, state);
    m_unsaved = true;
    const bool news = m_record.spans().size() != spans || now / DayRecord::kSlot != m_savedSlot;
    if (news) launch(save());
    Q_EMIT changed();
}

void DayKeeper::countOwn(bool blocked)
{
    m_record.countOwn(seconds(), blocked);
    m_unsaved = true;
}

Flow<> DayKeeper::save()
{
    if (!m_loaded || m_saving) co_return;
    m_saving = true;
    m_unsaved = false;
    m_savedSlot = seconds() / DayRecord::kSlot;
    const std::function<Written()> write = [file = m_file, turn = m_file->nextTurn(), bytes = m_record.toBytes()] {
        return file->write(turn, bytes);
    };
    BackgroundWork<Written> work(write);
    const Written written = co_await work;
    m_saving = false;
    m_unsaved = m_unsaved || !written;
    const QString trouble =
        written ? QString() : QStringLiteral("The day's record could not be saved: ") + written.error();
    if (trouble == m_trouble) co_return;
    m_trouble = trouble;
    Q_EMIT changed();
}

} // namespace corvane
