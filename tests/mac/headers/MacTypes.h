#pragma once

#include <stdint.h>

typedef unsigned char UInt8;
typedef unsigned char Boolean;
typedef int32_t OSStatus;
typedef uint32_t OSType;
typedef uint32_t FourCharCode;
