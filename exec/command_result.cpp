#include "exec/command_result.h"

#include <QStringList>

namespace corvane {

QString CommandResult::combined() const
{
    QStringList parts{standardOutput.trimmed(), standardError.trimmed()};
    parts.removeAll(QString());
    return parts.join(u'\n');
}

} // namespace corvane
