#include "fuzz/require.h"
#include "runtime/deployed_container.h"

#include <cstdint>

using namespace corvane;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QString output = QString::fromUtf8(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    const auto found = DeployedContainer::parse(output);
    require(!found || (found->exists && !found->tag.contains(u'|') && found->tag.size() < output.size()));
    require(DeployedContainer::parse(QStringLiteral("  %1\n").arg(output)) == found);
    return 0;
}
