#include "platform/application_menu.h"

namespace corvane {

std::unique_ptr<QObject> systemApplicationMenu(const ApplicationCommands &) { return nullptr; }

} // namespace corvane
