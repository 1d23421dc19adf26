#include "app/release_feed.h"
#include "app/version_tag.h"
#include "fuzz/require.h"

#include <cstdint>

using namespace corvane;

namespace {

void checkTag(const QString &tag)
{
    require(isVersionTag(tag) && versionParts(tag).size() == 3);
    require(!isNewer(tag, tag));
    const QString known = QStringLiteral("2026.09.0");
    require(tag == known || isNewer(tag, known) || isNewer(known, tag));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    if (const auto tag = ReleaseFeed::parse(bytes)) checkTag(*tag);
    // The same bytes as a tag.
    const QString text = QString::fromUtf8(bytes);
    if (isVersionTag(text)) checkTag(text);
    return 0;
}
