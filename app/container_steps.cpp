#include "app/container_steps.h"

#include "runtime/docker_cli.h"
#include "runtime/machine_port.h"
#include "runtime/pihole_controller.h"

namespace corvane {

QCoro::Task<std::expected<CommandSteps, QString>> containerSteps(WantedContainer wanted)
{
    CommandSteps steps = PiholeController::upSteps(wanted.tag, wanted.webPort, wanted.compose);
    if (steps.isEmpty()) co_return std::unexpected(QString(DockerCLI::kNotFound));
    if (wanted.pull) steps = PiholeController::pullSteps(wanted.tag, wanted.compose) + steps;
    const MachinePort port = co_await MachinePort::ask();
    if (!port.problem().isEmpty()) co_return std::unexpected(port.problem());
    if (port.holder() == MachinePort::Holder::NameService) steps = MachinePort::roomSteps() + steps;
    co_return steps;
}

} // namespace corvane
