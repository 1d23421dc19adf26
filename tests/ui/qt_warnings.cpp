#include "tests/ui/qt_warnings.h"

#include <QMutex>

namespace corvane::test {

namespace {

// Workers warn, too.
QBasicMutex lock;
QStringList warnings;

void noteWarnings(QtMsgType type, const QMessageLogContext &, const QString &message)
{
    if (type == QtDebugMsg || type == QtInfoMsg) return;
    // The offscreen platform owns up to what it has no use for, and has no tray.
    if (message.startsWith(QLatin1String("This plugin does not support "))) return;
    if (message.contains(QLatin1String("QPlatformNativeInterface::systemTrayWindowChanged"))) return;
    const QMutexLocker locked(&lock);
    warnings << message;
}

} // namespace

QtWarnings::QtWarnings()
{
    warnings.clear();
    qInstallMessageHandler(noteWarnings);
}

QtWarnings::~QtWarnings() { qInstallMessageHandler(nullptr); }

QStringList QtWarnings::all()
{
    const QMutexLocker locked(&lock);
    return warnings;
}

} // namespace corvane::test
