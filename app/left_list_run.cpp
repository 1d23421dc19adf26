#include "app/left_list_run.h"

namespace corvane {

namespace {

const QString kBegun = QStringLiteral("listRunBegun"); // 0 for none
const QString kBefore = QStringLiteral("listRunBefore");

} // namespace

void LeftListRun::begin(const Run &run)
{
    m_settings.setValue(kBefore, run.before);
    m_settings.setValue(kBegun, run.begun);
}

void LeftListRun::end()
{
    if (m_settings.value(kBegun).toLongLong() != 0) m_settings.setValue(kBegun, 0);
}

std::optional<LeftListRun::Run> LeftListRun::run() const
{
    const qint64 begun = m_settings.value(kBegun).toLongLong();
    if (begun <= 0) return std::nullopt;
    return Run{begun, m_settings.value(kBefore).toLongLong()};
}

} // namespace corvane
