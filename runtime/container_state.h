#pragma once

#include <QString>
#include <QStringView>

namespace corvane {

/// The state of the container named "pihole".
class ContainerState {
public:
    enum class Kind { Stopped, Running, DockerDown, Missing };

    /// `state`: Docker's word for it, for example "exited"; may be empty.
    [[nodiscard]] static ContainerState stopped(const QString &state) { return {Kind::Stopped, state}; }
    /// `health`: "healthy", "unhealthy", "starting", or "none" when the image defines no health check.
    [[nodiscard]] static ContainerState running(const QString &health) { return {Kind::Running, health}; }
    /// Docker itself does not answer.
    [[nodiscard]] static ContainerState dockerDown() { return {Kind::DockerDown, {}}; }
    /// Docker answers, but there is no such container.
    [[nodiscard]] static ContainerState missing() { return {Kind::Missing, {}}; }

    /// Reads what "docker inspect" printed for Corvane's format: the state, a bar and the health.
    [[nodiscard]] static ContainerState parse(QStringView output);

    [[nodiscard]] Kind kind() const { return m_kind; }
    /// The state text of a stopped container or the health of a running one.
    [[nodiscard]] const QString &text() const { return m_text; }
    [[nodiscard]] bool isRunning() const { return m_kind == Kind::Running; }
    [[nodiscard]] bool isMissing() const { return m_kind == Kind::Missing; }

    bool operator==(const ContainerState &) const = default;

private:
    ContainerState(Kind kind, const QString &text)
        : m_kind(kind)
        , m_text(text)
    {}

    Kind m_kind;
    QString m_text;
};

} // namespace corvane
