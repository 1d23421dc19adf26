#include "benchmarks/ui/screens.h"

#include <QEventLoop>
#include <QQuickItem>
#include <QTimer>

namespace corvane::bench {

namespace {

QQuickItem *find(QQuickItem *root, const QString &name)
{
    if (root->objectName() == name) return root;
    for (QQuickItem *child : root->childItems()) {
        if (QQuickItem *found = find(child, name)) return found;
    }
    return nullptr;
}

} // namespace

QQuickItem &Screens::item(const char *name) const
{
    QQuickItem *found = find(window().contentItem(), QString::fromUtf8(name));
    if (!found) qFatal("There is no %s", name);
    return *found;
}

void passTime(int milliseconds)
{
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec();
}

} // namespace corvane::bench
