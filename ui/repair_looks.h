#pragma once

#include "app/repair.h"
#include "ui/row_list.h"

#include <QPointer>
#include <QtQml/qqmlregistration.h>

namespace corvane {

/// What the section about a site that does not load shows. It lives with its section: once that has gone, nobody looks
/// at what Pi-hole blocks.
class RepairLooks : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(corvane::Repair *repair READ repair WRITE setRepair NOTIFY repairChanged REQUIRED)
    Q_PROPERTY(corvane::RowList *newNames READ newNames CONSTANT)
    Q_PROPERTY(corvane::RowList *olderNames READ olderNames CONSTANT)
    Q_PROPERTY(corvane::RowList *permissions READ permissions CONSTANT)
    /// How many names are not shown.
    Q_PROPERTY(QString moreNew MEMBER m_moreNew NOTIFY changed)
    Q_PROPERTY(QString moreOlder MEMBER m_moreOlder NOTIFY changed)
    Q_PROPERTY(QString noNames MEMBER m_noNames NOTIFY changed)

public:
    using QObject::QObject;
    ~RepairLooks() override;

    [[nodiscard]] Repair *repair() const { return m_repair; }
    void setRepair(Repair *repair);
    [[nodiscard]] RowList *newNames() { return &m_new; }
    [[nodiscard]] RowList *olderNames() { return &m_older; }
    [[nodiscard]] RowList *permissions() { return &m_permissions; }

Q_SIGNALS:
    void repairChanged();
    void changed();

private:
    void follow();

    QPointer<Repair> m_repair;
    RowList m_new;
    RowList m_older;
    RowList m_permissions;
    QString m_moreNew;
    QString m_moreOlder;
    QString m_noNames;
};

} // namespace corvane
