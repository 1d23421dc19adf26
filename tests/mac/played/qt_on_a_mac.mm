// The members of Qt's classes that exist on a Mac only.

#include "tests/mac/played/diary.h"
#import "tests/mac/played/foundation.h"
#include "tests/mac/played/objects.h"

#include <QImage>
#include <QMenu>
#include <QUrl>

#import <AppKit/AppKit.h>

using namespace corvane::played;

CGImageRef corvane_played_image(const QImage &image);

NSString *QString::toNSString() const { return string(*this); }
QString QString::fromNSString(const NSString *string) { return text(const_cast<NSString *>(string)); }
CFStringRef QString::toCFString() const { return reinterpret_cast<CFStringRef>(made(PlayedObject::Text, toUtf8())); }
QString QString::fromCFString(CFStringRef string) { return described(string); }
CFDataRef QByteArray::toCFData() const { return reinterpret_cast<CFDataRef>(made(PlayedObject::Bytes, *this)); }
NSURL *QUrl::toNSURL() const { return isValid() ? corvane::played::url(toString(QUrl::FullyEncoded)) : nil; }
CGImageRef QImage::toCGImage() const { return isNull() ? nullptr : corvane_played_image(*this); }

NSMenu *QMenu::toNSMenu() { return [NSMenu alloc]; }
