#include "checks/secure_dns_readers.h"

#include <cstdint>
#include <cstdlib>

using namespace corvane;

namespace {

constexpr qsizetype kLongestSentence = 1200;

void requireSentence(const SecureDNSReading &reading)
{
    const bool sentence = !reading.detail.isEmpty() && reading.detail.size() <= kLongestSentence;
    if (!sentence || reading.state == SecureDNSState::NotApplicable) std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    requireSentence(readLocalState(bytes));
    requireSentence(readLocalState(R"({"dns_over_https":)" + bytes + '}'));
    requireSentence(readPrefs(bytes));
    requireSentence(readPrefs("user_pref(\"network.trr.mode\"," + bytes));
    return 0;
}
