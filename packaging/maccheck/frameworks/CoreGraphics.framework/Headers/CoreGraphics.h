/* The declarations of Core Graphics that Corvane uses. Written by hand from Apple's documentation; the comment above a
   group names the header that has it on a Mac. */
#pragma once

#include <CoreFoundation/CoreFoundation.h>

#ifdef __cplusplus
extern "C" {
#endif

/* CGBase.h */
typedef double CGFloat;

/* CGGeometry.h */
typedef struct CGPoint {
    CGFloat x;
    CGFloat y;
} CGPoint;
typedef struct CGSize {
    CGFloat width;
    CGFloat height;
} CGSize;
typedef struct CGRect {
    CGPoint origin;
    CGSize size;
} CGRect;
static inline CGSize CGSizeMake(CGFloat width, CGFloat height)
{
    CGSize size = {width, height};
    return size;
}

/* CGImage.h */
typedef struct CGImage *CGImageRef;
void CGImageRelease(CGImageRef image);

/* CGContext.h */
typedef struct CGContext *CGContextRef;
void CGContextDrawImage(CGContextRef context, CGRect area, CGImageRef image);
CGSize CGContextConvertSizeToDeviceSpace(CGContextRef context, CGSize size);

#ifdef __cplusplus
}
#endif
