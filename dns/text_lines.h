#pragma once

#include <QList>
#include <QStringView>

namespace corvane {

/// The lines of a tool's output, each without spaces and tabs at its ends. They view the text they came from.
[[nodiscard]] QList<QStringView> trimmedLines(QStringView text);

/// The text without spaces and tabs at its ends; other white space stays.
[[nodiscard]] QStringView trimmedBlanks(QStringView text);

} // namespace corvane
