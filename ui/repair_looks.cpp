#include "ui/repair_looks.h"

#include "ui/decisions/repair_texts.h"

namespace corvane {

RepairLooks::~RepairLooks()
{
    if (m_repair) m_repair->stopWatching();
}

void RepairLooks::setRepair(Repair *repair)
{
    if (!repair || repair == m_repair) return;
    if (m_repair) m_repair->disconnect(this);
    m_repair = repair;
    for (auto signal :
         {&Repair::namesChanged, &Repair::permissionsChanged, &Repair::privacyLevelChanged, &Repair::troubleChanged})
        connect(repair, signal, this, &RepairLooks::follow);
    follow();
    Q_EMIT repairChanged();
}

void RepairLooks::follow()
{
    const QList<BlockedName> names = m_repair->names();
    const QList<Permission> allowed = m_repair->permissions();
    m_new.show(blockedRows(names, true, allowed));
    m_older.show(blockedRows(names, false, allowed));
    m_permissions.show(permissionRows(allowed));
    m_moreNew = moreNames(names, true);
    m_moreOlder = moreNames(names, false);
    m_noNames = noNamesText(names, m_repair->privacyLevel(), m_repair->trouble());
    Q_EMIT changed();
}

} // namespace corvane
