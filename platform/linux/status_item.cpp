#include "platform/status_item.h"

#include <QIcon>
#include <QMenu>
#include <QPixmap>
#include <QSystemTrayIcon>

namespace corvane {

namespace {

/// A status notifier, or an icon in the X tray where no notifier host runs.
class TrayItem final : public StatusItem {
public:
    void setPicture(const Picture &picture) override
    {
        QIcon icon;
        for (const double scale : {1.0, 2.0, 3.0})
            icon.addPixmap(QPixmap::fromImage(picture(scale)));
        m_tray.setIcon(icon);
        m_tray.show();
    }

    void setSpokenName(const QString &name) override { m_tray.setToolTip(name); }
    void setMenu(QMenu *menu) override { m_tray.setContextMenu(menu); }

private:
    QSystemTrayIcon m_tray;
};

} // namespace

std::unique_ptr<StatusItem> systemStatusItem() { return std::make_unique<TrayItem>(); }

} // namespace corvane
