#pragma once

namespace corvane::platform {

/// Whether the question to quit that is being answered now comes from the end of the user's session: a log-out, a
/// restart or a shut-down.
[[nodiscard]] bool sessionIsEnding();

/// Ends the process here and now, without a word to the caller that asked it to quit.
void leaveAtOnce();

} // namespace corvane::platform
