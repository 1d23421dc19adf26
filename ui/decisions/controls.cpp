#include "ui/decisions/controls.h"

#include <QVersionNumber>

namespace corvane {

bool canStart(const ContainerState &container, bool operating) { return !operating && !container.isRunning(); }

bool canStopOrRestart(const ContainerState &container, bool operating) { return !operating && container.isRunning(); }

bool isNewer(const std::optional<QString> &latest, const QString &pinned)
{
    return latest && QVersionNumber::fromString(*latest) > QVersionNumber::fromString(pinned);
}

} // namespace corvane
