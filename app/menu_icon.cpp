#include "app/menu_icon.h"

namespace corvane {

namespace {

QString stoppedLine(const ContainerState &container)
{
    switch (container.kind()) {
    case ContainerState::Kind::DockerDown:
        return QStringLiteral("Stopped (Docker/Colima is not running)");
    case ContainerState::Kind::Missing:
        return QStringLiteral("Pi-hole is not installed yet");
    case ContainerState::Kind::Stopped:
    case ContainerState::Kind::Running:
        break;
    }
    return QStringLiteral("Pi-hole is stopped");
}

} // namespace

MenuIcon menuIcon(bool statusChecked, bool answering, bool usedByMac)
{
    if (!statusChecked) return MenuIcon::Unknown;
    if (answering) return usedByMac ? MenuIcon::Active : MenuIcon::NotUsed;
    return usedByMac ? MenuIcon::NotAnswering : MenuIcon::Stopped;
}

QString statusLine(MenuIcon icon, const ContainerState &container)
{
    switch (icon) {
    case MenuIcon::Active:
        return QStringLiteral("Pi-hole is answering and this Mac uses it");
    case MenuIcon::NotUsed:
        return QStringLiteral("Pi-hole is answering, but this Mac does not use it");
    case MenuIcon::NotAnswering:
        return QStringLiteral("This Mac uses Pi-hole, but Pi-hole is not answering");
    case MenuIcon::Unknown:
        return QStringLiteral("Checking Pi-hole...");
    case MenuIcon::Stopped:
        break;
    }
    return stoppedLine(container);
}

} // namespace corvane
