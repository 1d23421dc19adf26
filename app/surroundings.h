#pragma once

#include "app/clock.h"
#include "app/dialogs.h"
#include "app/settings_store.h"
#include "platform/login_item.h"
#include "platform/workspace.h"

#include <QUrl>

namespace corvane {

/// What the model asks of the world around it, apart from the programs it runs. All of it outlives the model.
struct Surroundings {
    SettingsStore &settings;
    Dialogs &dialogs;
    Workspace &workspace;
    LoginItem &loginItem;
    Clock &clock;
    /// The address of the release feed of the Pi-hole image.
    QUrl releaseFeed;
};

} // namespace corvane
