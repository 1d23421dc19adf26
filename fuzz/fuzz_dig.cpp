#include "fuzz/require.h"
#include "runtime/dig_result.h"

#include <cstdint>

using namespace corvane;

namespace {

bool isUpperCase(QChar c) { return c >= u'A' && c <= u'Z'; }

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    CommandResult run;
    run.status = 0;
    run.standardOutput = QString::fromUtf8(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    const DigResult result = DigResult::parse(run);

    require(result.ok == !result.status.isEmpty());
    for (const QChar c : result.status)
        require(isUpperCase(c));
    require(result.status.isEmpty() || run.standardOutput.contains(QStringLiteral("status: ") + result.status));
    require(result.answers.size() <= run.standardOutput.count(u'\n') + 1);
    for (const QString &answer : result.answers) {
        require(!answer.isEmpty() && !answer.contains(u' ') && !answer.contains(u'\t') && !answer.contains(u'\n'));
    }
    return 0;
}
