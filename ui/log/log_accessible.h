#pragma once

namespace corvane {

/// Lets a screen reader read every log as a text: by character, word and line, with its caret and its selection.
void makeLogsAccessible();

} // namespace corvane
