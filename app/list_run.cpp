#include "app/list_run.h"

#include "app/blocked_name.h"
#include "exec/plain_text.h"

namespace corvane {

ListRun::ListRun() = default;

void ListRun::begin(int lists)
{
    m_lists = lists;
    m_fetched = 0;
    m_log.reset();
    setPrinted(true);
    setProgress(QStringLiteral("Pi-hole prepares its block lists..."));
}

void ListRun::end()
{
    m_splitter.flush();
    setProgress({});
}

void ListRun::take(const QString &line)
{
    const QString text = plainLine(line);
    if (!text.trimmed().isEmpty()) m_log.append(text);
    static const QString target = QStringLiteral("[i] Target: ");
    const qsizetype at = text.indexOf(target);
    if (at >= 0) {
        PiholeList list;
        list.address = text.mid(at + target.size()).trimmed();
        ++m_fetched;
        setProgress(m_fetched <= m_lists
                        ? QStringLiteral("List %1 of %2: %3").arg(m_fetched).arg(m_lists).arg(listName(list))
                        : QStringLiteral("List %1: %2").arg(m_fetched).arg(listName(list)));
    } else if (text.contains(QLatin1String("Building tree"))) {
        setProgress(QStringLiteral("Pi-hole puts the lists in force..."));
    }
}

} // namespace corvane
