#include "app/app_model.h"
#include "dns/dns_configurator.h"
#include "runtime/machine_port.h"
#include "runtime/pihole_controller.h"

#include <QPointer>
#include <QScopeGuard>

namespace corvane {

namespace {

/// Whether an answer on this Mac can be Pi-hole's: without a running container it may come from the name service of
/// Colima's virtual machine, whose ports are forwarded too.
QCoro::Task<bool> mayAnswer(ContainerState container)
{
    const bool knownToBeDown =
        container.kind() == ContainerState::Kind::Stopped || container.kind() == ContainerState::Kind::Missing;
    if (!knownToBeDown) co_return true;
    const MachinePort port = co_await MachinePort::ask();
    co_return port.holder() != MachinePort::Holder::NameService;
}

} // namespace

QCoro::Task<> AppModel::refreshStatus(bool includeStats)
{
    if (m_refreshing) co_return;
    m_refreshing = true;
    const QPointer<AppModel> alive(this);
    const auto done = qScopeGuard([alive] {
        if (alive) alive->m_refreshing = false;
    });

    const ContainerState container = co_await PiholeController::containerState();
    if (!alive) co_return;
    setContainerState(container);

    const DigResult reply = co_await PiholeController::dig(QStringLiteral("example.com"), QStringLiteral("A"), false,
                                                           QStringLiteral("127.0.0.1"));
    const bool fromPihole = reply.answered() && co_await mayAnswer(container);
    if (!alive) co_return;
    setAnswering(fromPihole);

    const ResolverReport report = co_await DNSConfigurator::resolverReport();
    if (!alive) co_return;
    setResolverReport(report);
    setUsedByMac(report.firstIsPihole);
    setStatusChecked(true);

    if (!answering()) {
        setSummary(std::nullopt);
        setBlocking(std::nullopt);
    } else if (includeStats && !(passwordKnown() && adminPassword().isEmpty())) {
        co_await refreshStats();
    }
}

QCoro::Task<> AppModel::refreshStats()
{
    const QPointer<AppModel> alive(this);
    configureAPI();
    const auto counters = co_await m_api.summary();
    if (!alive) co_return;
    if (!counters) {
        setApiMessage(counters.error().description());
        co_return;
    }
    setSummary(*counters);

    const auto state = co_await m_api.blocking();
    if (!alive) co_return;
    if (state) setBlocking(*state);
    setApiMessage(state ? QString() : state.error().description());
}

} // namespace corvane
