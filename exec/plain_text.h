#pragma once

#include <QString>

namespace corvane {

/// A line without what only a terminal understands: colours, cursor movements and other control characters. Tabs stay.
[[nodiscard]] QString plainLine(const QString &line);

/// The text cut into lines as LineSplitter cuts it, each of them plain.
[[nodiscard]] QString plainText(const QString &text);

} // namespace corvane
