#include "runtime/container_state.h"

#include <QList>

namespace corvane {

ContainerState ContainerState::parse(QStringView output)
{
    const QList<QStringView> parts = output.trimmed().split(u'|');
    if (parts[0] != u"running") return stopped(parts[0].toString());
    return running(parts.size() > 1 ? parts[1].toString() : QStringLiteral("none"));
}

} // namespace corvane
