// Reads whatever Homebrew, Colima and Docker may print when they fail.

#include "exec/plain_text.h"
#include "runtime/tool_failures.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

using corvane::FailureReading;
using corvane::ToolFailures;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QString text = QString::fromUtf8(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    const QString plain = corvane::plainText(text);
    for (const QChar c : plain) {
        if (c.category() == QChar::Other_Control && c != u'\n' && c != u'\t') std::abort();
    }

    const QStringList lines = plain.split(u'\n');
    for (const FailureReading &reading :
         {ToolFailures::homebrew(lines), ToolFailures::colima(lines), ToolFailures::docker(lines)}) {
        // A cause is told with the line that carries it, or not at all.
        if (reading.sentence.isEmpty() != reading.line.isEmpty()) std::abort();
    }
    return 0;
}
