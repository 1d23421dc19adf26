#include "fuzz/require.h"
#include "runtime/container_state.h"

#include <algorithm>
#include <cstdint>

using namespace corvane;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QString output = QString::fromUtf8(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    const ContainerState state = ContainerState::parse(output);

    const bool running = output.trimmed() == u"running" || output.trimmed().startsWith(u"running|");
    require(state.isRunning() == running);
    require(running || state.kind() == ContainerState::Kind::Stopped);
    require(!state.text().contains(u'|') && state.text().size() <= std::max<qsizetype>(output.size(), 4));
    return 0;
}
