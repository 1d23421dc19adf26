#pragma once

#include "exec/command.h"
#include "exec/command_result.h"

#include <QCoro/QCoroTask>
#include <QLatin1StringView>

#include <optional>

namespace corvane {

/// Whether the Docker engine can be used.
struct EngineAnswer {
    bool answers = false;
    /// Why an engine that is there cannot be used, in a sentence; empty when it can, or when there is none.
    QString problem = {};
};

/// Runs the Docker client and puts its errors into plain words.
class DockerCLI {
public:
    /// The folders in which docker is looked for, in order.
    [[nodiscard]] static const QStringList &searchDirs();
    [[nodiscard]] static std::optional<QString> find();

    /// Runs docker. Without it the result's launch error is "docker was not found".
    [[nodiscard]] static QCoro::Task<CommandResult> run(QStringList args, std::chrono::milliseconds limit,
                                                        Streams streams = Streams::Apart);

    /// Asks the engine for its version. A client may end with status 0 although no engine answered: what counts is that
    /// a version was printed.
    [[nodiscard]] static QCoro::Task<EngineAnswer> engine();

    static constexpr QLatin1StringView kNotFound{"docker was not found."};
    /// What `friendlyError` says when another program holds a port.
    static constexpr QLatin1StringView kPortInUse{"A port that Pi-hole needs is already in use. Pick another web port "
                                                  "(8081 to 8090) or stop whatever uses port 53."};

    /// Docker's error text as one sentence for the user.
    [[nodiscard]] static QString friendlyError(const QString &text);
};

} // namespace corvane
