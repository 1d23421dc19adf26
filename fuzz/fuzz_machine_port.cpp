#include "fuzz/require.h"
#include "runtime/machine_port.h"

#include <cstdint>

using namespace corvane;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QString listing = QString::fromUtf8(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    const MachinePort port = MachinePort::parse(listing);

    using Holder = MachinePort::Holder;
    require(port == MachinePort::parse(listing + u'\n'));
    require(port.problem().isEmpty() == (port.holder() == Holder::Nobody || port.holder() == Holder::NameService));
    require(!port.problem().contains(u'\n'));
    if (!listing.contains(QLatin1String("dnsmasq"))) require(port.holder() != Holder::NameService);
    if (!listing.contains(QLatin1String("docker-proxy"))) require(port.holder() != Holder::Container);
    return 0;
}
