#include "platform/mac/about_panel.h"

#import <AppKit/AppKit.h>

namespace corvane::platform {

void showAboutPanel() { [NSApp orderFrontStandardAboutPanel:nil]; }

} // namespace corvane::platform
