#pragma once

#include <objc/objc.h>

typedef long NSInteger;
typedef unsigned long NSUInteger;

@protocol NSObject
@end

__attribute__((objc_root_class))
@interface NSObject<NSObject> {
    Class isa;
}
+ (instancetype)alloc;
- (instancetype)init;
@end
