#pragma once

namespace corvane::platform {

/// The system's own panel with the icon, the name and the version from the bundle.
void showAboutPanel();

} // namespace corvane::platform
