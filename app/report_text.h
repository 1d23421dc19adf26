#pragma once

#include <QString>
#include <QStringList>

namespace corvane {

/// A report in plain text, built section by section.
class ReportText {
public:
    void section(const QString &title);
    /// A fact under its name; left out when there is nothing to say.
    void fact(const QString &name, const QString &value);
    void fact(const QString &name, bool value);
    void lines(const QStringList &lines);

    [[nodiscard]] QString text() const { return m_lines.join(u'\n') + u'\n'; }

private:
    QStringList m_lines;
};

} // namespace corvane
