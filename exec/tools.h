#pragma once

#include "exec/command.h"

#include <QStringList>

#include <optional>

namespace corvane {

/// Where outside programs are looked for and the environment they are given.
class Tools {
public:
    /// The folders that are searched, in order; joined by ":" they are every child's PATH.
    [[nodiscard]] static const QStringList &searchDirs();

    /// The first of dir + "/" + name that is an executable file.
    [[nodiscard]] static std::optional<QString> find(const QString &name, const QStringList &dirs);

    /// This process's environment, byte for byte, with PATH replaced by the search folders, then with `extra` laid over
    /// it.
    [[nodiscard]] static QMap<QByteArray, QByteArray> environment(const Environment &extra);
};

} // namespace corvane
