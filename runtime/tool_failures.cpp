#include "runtime/tool_failures.h"

#include "runtime/machine_port.h"

#include <QFileInfo>

namespace corvane {

FailureReading ToolFailures::read(const FailedStep &failed)
{
    if (failed.step.label == MachinePort::kMakingRoom) return room(failed.lines);
    const QString tool = QFileInfo(failed.step.exe).fileName();
    if (tool == u"brew") return homebrew(failed.lines);
    if (tool == u"colima") return colima(failed.lines);
    if (tool == u"docker") return docker(failed.lines);
    return {};
}

FailureReading ToolFailures::room(const QStringList &lines)
{
    FailureReading reading;
    reading.sentence = QStringLiteral("Colima's virtual machine could not make room for Pi-hole: its own name service "
                                      "keeps port 53. Restart Colima (\"colima restart\" in Terminal), then try "
                                      "again.");
    if (!lines.isEmpty()) reading.line = lines.last();
    return reading;
}

} // namespace corvane
