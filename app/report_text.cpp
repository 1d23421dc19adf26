#include "app/report_text.h"

namespace corvane {

void ReportText::section(const QString &title)
{
    if (!m_lines.isEmpty()) m_lines += QString();
    m_lines += title;
    m_lines += QString(title.size(), u'-');
}

void ReportText::fact(const QString &name, const QString &value)
{
    if (!value.isEmpty()) m_lines += name + QStringLiteral(": ") + value;
}

void ReportText::fact(const QString &name, bool value)
{
    fact(name, value ? QStringLiteral("yes") : QStringLiteral("no"));
}

void ReportText::lines(const QStringList &lines)
{
    for (const QString &line : lines)
        m_lines += QStringLiteral("  ") + line;
}

} // namespace corvane
