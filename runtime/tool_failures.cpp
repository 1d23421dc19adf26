#include "runtime/tool_failures.h"

#include <QFileInfo>

namespace corvane {

FailureReading ToolFailures::read(const FailedStep &failed)
{
    const QString tool = QFileInfo(failed.step.exe).fileName();
    if (tool == u"brew") return homebrew(failed.lines);
    if (tool == u"colima") return colima(failed.lines);
    if (tool == u"docker") return docker(failed.lines);
    return {};
}

} // namespace corvane
