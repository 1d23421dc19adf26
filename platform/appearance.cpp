#include "platform/appearance.h"

#include <QCoreApplication>
#include <QEvent>

namespace corvane {

Appearance::Appearance()
{
    if (qApp) qApp->installEventFilter(this);
}

bool Appearance::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == qApp && event->type() == QEvent::ApplicationPaletteChange) Q_EMIT changed();
    return QObject::eventFilter(watched, event);
}

} // namespace corvane
