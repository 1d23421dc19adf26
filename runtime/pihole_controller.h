#pragma once

#include "exec/command_step.h"
#include "facts/transport.h"
#include "runtime/container_state.h"
#include "runtime/deployed_container.h"
#include "runtime/dig_result.h"

#include <QCoro/QCoroTask>

#include <expected>

namespace corvane {

/// The one Pi-hole container that Corvane runs: its definition on disk and the commands around it.
class PiholeController {
public:
    /// For a question that is answered at once.
    static constexpr std::chrono::seconds kQuickTimeout{10};
    /// For the container's log.
    static constexpr std::chrono::seconds kLogTimeout{20};

    /// Asks the engine, then for the container: two calls, each within kQuickTimeout.
    [[nodiscard]] static QCoro::Task<ContainerState> containerState();
    /// What it was made from, within kQuickTimeout; nothing when Docker does not say.
    [[nodiscard]] static QCoro::Task<std::optional<DeployedContainer>> deployed();

    /// Asks `server` on port 53 for records such as "A" of `name`, once, for at most three seconds.
    [[nodiscard]] static QCoro::Task<DigResult> dig(QString name, QString type, Transport transport, QString server);
    /// Asks Pi-hole for the IPv4 addresses of `name`.
    [[nodiscard]] static QCoro::Task<DigResult> ask(QString name, Transport transport = Transport::Udp);
    /// Whether Pi-hole knows its own name. It neither counts nor logs that question, and the
    /// answer comes from nowhere else; given up after a second.
    [[nodiscard]] static QCoro::Task<bool> knowsItsName();

    /// The Mac's time zone if every character of it may be used in YAML and on a command line, else "UTC".
    [[nodiscard]] static QString safeTimeZone();
    [[nodiscard]] static QString safeTimeZone(const QString &identifier);

    /// What "docker-compose.yml" holds.
    [[nodiscard]] static QString composeText(const QString &tag, int webPort, const QString &timeZone);

    /// Writes "docker-compose.yml" and "pihole.env" (0600) into the support folder; the reason when one cannot be
    /// written.
    [[nodiscard]] static std::expected<void, QString> writeFiles(const QString &tag, int webPort,
                                                                 const QString &password);
    /// The first of them alone, for when the password is not known.
    [[nodiscard]] static std::expected<void, QString> writeComposeFile(const QString &tag, int webPort);
    /// Whether both are there, for this version and port and, unless it is empty, with this password.
    [[nodiscard]] static bool filesSay(const QString &tag, int webPort, const QString &password);
    /// Where the two files are; the support folder is made when it is missing.
    [[nodiscard]] static QString composeFile();
    [[nodiscard]] static QString environmentFile();

    // Steps; none when docker is missing. `compose`: docker has its compose plug-in, and takes all from composeFile().

    /// Downloads the image of that version.
    [[nodiscard]] static CommandSteps pullSteps(const QString &tag, bool compose);
    /// Removes the container, if there is one, and makes and starts another. Write the files first.
    [[nodiscard]] static CommandSteps upSteps(const QString &tag, int webPort, bool compose);

    /// The newest `tail` lines of the container's log, within kLogTimeout, or a sentence that says why there are none.
    [[nodiscard]] static QCoro::Task<QString> logs(int tail);
};

} // namespace corvane
