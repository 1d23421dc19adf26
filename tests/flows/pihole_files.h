#pragma once

#include <QStringList>

namespace corvane::test {

/// What Corvane's support folder and Docker hold of Pi-hole.
class PiholeFiles {
public:
    [[nodiscard]] static QString folder();
    [[nodiscard]] static QString compose();
    [[nodiscard]] static QString environment();

    /// The tag of the image that the compose file pins; empty when it is not a whole one.
    [[nodiscard]] static QString composeTag();
    /// The web port that the compose file publishes; 0 when it is not a whole one.
    [[nodiscard]] static int composePort();
    /// Whether the password file is whole and the owner's alone.
    [[nodiscard]] static bool environmentIsWhole(const QString &password);
    /// The archives in the backups folder, with their paths.
    [[nodiscard]] static QStringList backups();

    /// The image of the container "pihole"; empty when there is none.
    [[nodiscard]] static QString containerImage();
    [[nodiscard]] static QStringList volumes();
    [[nodiscard]] static QStringList bothVolumes();
};

} // namespace corvane::test
