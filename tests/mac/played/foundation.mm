#import "tests/mac/played/foundation.h"

#include "tests/mac/played/diary.h"
#include "tests/mac/played/mac.h"

#include <QList>

#import <Foundation/Foundation.h>
#import <objc/runtime.h>

using namespace corvane::played;

@implementation NSObject
+ (instancetype)alloc
{
    return class_createInstance(self, 0);
}
- (instancetype)init
{
    return self;
}
@end

@implementation NSString
@end
/// A text that was made while the program runs.
@interface PlayedString : NSString {
@public
    QString *characters;
}
@end
@implementation PlayedString
@end
/// A text that is in the source, as the compiler lays it out.
@interface NSConstantString : NSString {
@public
    const char *characters;
    unsigned int length;
}
@end
@implementation NSConstantString
@end

@interface PlayedArray : NSArray {
@public
    QList<id> *items;
}
@end
@implementation PlayedArray
@end
@implementation NSArray
+ (instancetype)arrayWithObjects:(const id[])objects count:(NSUInteger)count
{
    PlayedArray *array = [PlayedArray alloc];
    array->items = new QList<id>(objects, objects + count);
    return array;
}
- (id)firstObject
{
    return corvane::played::at(self, 0);
}
- (NSUInteger)countByEnumeratingWithState:(NSFastEnumerationState *)state objects:(id[])buffer count:(NSUInteger)length
{
    const NSUInteger from = state->state;
    const NSUInteger size = corvane::played::count(self);
    state->itemsPtr = buffer;
    state->mutationsPtr = &state->extra[0];
    for (NSUInteger index = from; index < size && index - from < length; ++index)
        buffer[index - from] = corvane::played::at(self, static_cast<int>(index));
    state->state = std::min(size, from + length);
    return state->state - from;
}
@end

@interface PlayedURL : NSURL {
@public
    QString *address;
}
@end
@implementation PlayedURL
@end
@implementation NSURL
- (NSString *)path
{
    return string(text(self));
}
@end

@interface PlayedError : NSError {
@public
    QString *description;
}
@end
@implementation PlayedError
@end
@implementation NSError
- (NSString *)localizedDescription
{
    return string(*static_cast<PlayedError *>(self)->description);
}
@end

namespace corvane::played {

NSString *string(const QString &text)
{
    PlayedString *made = [PlayedString alloc];
    made->characters = new QString(text);
    return made;
}

QString text(NSString *string)
{
    if (!string) return {};
    if (object_getClass(string) == objc_getClass("PlayedString"))
        return *static_cast<PlayedString *>(string)->characters;
    const auto *literal = static_cast<NSConstantString *>(string);
    return QString::fromUtf8(literal->characters, literal->length);
}

NSURL *url(const QString &address)
{
    PlayedURL *made = [PlayedURL alloc];
    made->address = new QString(address);
    return made;
}

QString text(NSURL *url) { return *static_cast<PlayedURL *>(url)->address; }

NSError *error(const QString &description)
{
    PlayedError *made = [PlayedError alloc];
    made->description = new QString(description);
    return made;
}

int count(NSArray *array) { return static_cast<int>(static_cast<PlayedArray *>(array)->items->size()); }
id at(NSArray *array, int index) { return static_cast<PlayedArray *>(array)->items->value(index); }

} // namespace corvane::played
