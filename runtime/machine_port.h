#pragma once

#include "exec/command_step.h"

#include <QCoro/QCoroTask>
#include <QLatin1StringView>

namespace corvane {

/// Who holds port 53 inside Colima's virtual machine, where Docker publishes Pi-hole's ports.
///
/// Colima's own name service takes the machine's loopback along with the address that it serves. It can be told to
/// leave the loopback alone by a file beside Colima's own; Colima keeps that file until the machine is deleted.
class MachinePort {
public:
    enum class Holder {
        Nobody,      ///< Nothing is in Pi-hole's way, or nothing is known about the machine.
        NameService, ///< Colima's own, which can give way.
        Container,   ///< Some container.
        Program,     ///< Any other program.
    };

    /// Asks the running machine; nobody when it does not answer.
    [[nodiscard]] static QCoro::Task<MachinePort> ask();
    /// What a list of sockets (`ss -H -lntup`) says.
    [[nodiscard]] static MachinePort parse(const QString &listing);

    static constexpr QLatin1StringView kMakingRoom{"Making room for Pi-hole in Colima's virtual machine"};

    /// One step, or none without colima. The machine goes on resolving names.
    [[nodiscard]] static CommandSteps roomSteps();
    /// The same at once; whether it worked shows in what follows.
    [[nodiscard]] static QCoro::Task<> makeRoom();
    /// The way back; does nothing where no room was made.
    [[nodiscard]] static QCoro::Task<> giveRoomBack();

    [[nodiscard]] Holder holder() const { return m_holder; }
    /// Who is in the way and cannot be moved, as a sentence; empty when nobody is.
    [[nodiscard]] QString problem() const;

    bool operator==(const MachinePort &) const = default;

private:
    [[nodiscard]] static QCoro::Task<MachinePort> amongContainers();
    [[nodiscard]] static QCoro::Task<> runInMachine(QString script);

    Holder m_holder = Holder::Nobody;
    QString m_name;
};

} // namespace corvane
