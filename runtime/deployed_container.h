#pragma once

#include <QString>
#include <QStringView>

#include <optional>

namespace corvane {

/// What the container named "pihole" was made from, if there is one.
struct DeployedContainer {
    bool exists = false;
    /// The tag of Pi-hole's image; empty when it is another image.
    QString tag = {};
    /// The port of this Mac that leads to the admin page; 0 when none does.
    int webPort = 0;

    /// What "docker inspect" is asked to print: the image, a bar and the published ports.
    static constexpr QLatin1StringView kFormat{"{{.Config.Image}}|{{json .HostConfig.PortBindings}}"};
    /// Nothing when that is not what was printed.
    [[nodiscard]] static std::optional<DeployedContainer> parse(QStringView output);

    bool operator==(const DeployedContainer &) const = default;
};

} // namespace corvane
