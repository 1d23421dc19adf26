#pragma once

#define API_AVAILABLE(...)
#define API_DEPRECATED_WITH_REPLACEMENT(...)
