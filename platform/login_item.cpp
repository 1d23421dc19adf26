#include "platform/login_item.h"

namespace corvane {

std::expected<void, QString> LoginItem::outcome(bool enabled, const std::optional<QString> &refusal, Status after)
{
    if (enabled == (after == Status::Enabled) && after != Status::RequiresApproval) return {};
    if (enabled && after == Status::RequiresApproval)
        return std::unexpected(
            QStringLiteral("macOS waits for your approval. Allow Corvane in System Settings, General, Login Items."));
    if (!refusal) return {};
    if (after == Status::NotFound)
        return std::unexpected(
            QStringLiteral("macOS does not know this copy of Corvane. Move it to the Applications folder, open it from "
                           "there and try again."));
    return std::unexpected(*refusal);
}

} // namespace corvane
