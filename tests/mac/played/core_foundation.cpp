#include "tests/mac/played/objects.h"

#include <QHash>

#include <CoreFoundation/CoreFoundation.h>

#include <atomic>

using corvane::played::lasting;
using corvane::played::made;
using corvane::played::object;

extern "C" {
int __CFConstantStringClassReference[32];
}

namespace {

std::atomic<int> live = 0;

/// How the compiler lays out a text literal.
struct Literal {
    const int *isa;
    int flags;
    const char *text;
    long length;
};

} // namespace

PlayedObject::PlayedObject(Kind kind)
    : kind(kind)
{
    ++live;
}

PlayedObject::~PlayedObject() { --live; }

namespace corvane::played {

PlayedObject *made(PlayedObject::Kind kind, const QByteArray &bytes, long long number)
{
    auto *made = new PlayedObject(kind);
    made->bytes = bytes;
    made->number = number;
    return made;
}

PlayedObject *object(const void *reference)
{
    static QHash<const void *, PlayedObject *> literals;
    const auto *literal = static_cast<const Literal *>(reference);
    if (literal->isa != __CFConstantStringClassReference)
        return static_cast<PlayedObject *>(const_cast<void *>(reference));
    PlayedObject *&object = literals[reference];
    if (!object) object = lasting(PlayedObject::Text, QByteArray(literal->text, literal->length));
    return object;
}

PlayedObject *lasting(PlayedObject::Kind kind, const QByteArray &bytes, long long number)
{
    PlayedObject *object = made(kind, bytes, number);
    object->references = 1'000'000;
    --live;
    return object;
}

QString described(const void *reference)
{
    const PlayedObject *what = object(reference);
    if (what->kind == PlayedObject::Number) return QString::number(what->number);
    if (what->kind == PlayedObject::Boolean) return what->number ? QStringLiteral("true") : QStringLiteral("false");
    return QString::fromUtf8(what->bytes);
}

QString describedPairs(const void *dictionary)
{
    QStringList words;
    for (const auto &[key, value] : object(dictionary)->pairs)
        words << described(key) + u'=' + described(value);
    return words.join(u' ');
}

int liveObjects() { return live; }

} // namespace corvane::played

extern "C" {

const CFAllocatorRef kCFAllocatorDefault = nullptr;
const CFDictionaryKeyCallBacks kCFTypeDictionaryKeyCallBacks = {};
const CFDictionaryValueCallBacks kCFTypeDictionaryValueCallBacks = {};
const CFBooleanRef kCFBooleanTrue = reinterpret_cast<CFBooleanRef>(lasting(PlayedObject::Boolean, {}, 1));
const CFBooleanRef kCFBooleanFalse = reinterpret_cast<CFBooleanRef>(lasting(PlayedObject::Boolean, {}, 0));

CFTypeRef CFRetain(CFTypeRef reference)
{
    ++object(reference)->references;
    return reference;
}

void CFRelease(CFTypeRef reference)
{
    PlayedObject *released = object(reference);
    if (--released->references == 0) delete released;
}

CFTypeID CFGetTypeID(CFTypeRef reference) { return object(reference)->kind; }
CFTypeID CFStringGetTypeID() { return PlayedObject::Text; }
CFTypeID CFDataGetTypeID() { return PlayedObject::Bytes; }
CFTypeID CFNumberGetTypeID() { return PlayedObject::Number; }
CFTypeID CFBooleanGetTypeID() { return PlayedObject::Boolean; }
Boolean CFBooleanGetValue(CFBooleanRef boolean) { return object(boolean)->number != 0; }

CFNumberRef CFNumberCreate(CFAllocatorRef, CFNumberType type, const void *value)
{
    const long long number =
        type == kCFNumberIntType ? *static_cast<const int *>(value) : *static_cast<const long long *>(value);
    return reinterpret_cast<CFNumberRef>(made(PlayedObject::Number, {}, number));
}

Boolean CFNumberGetValue(CFNumberRef number, CFNumberType type, void *value)
{
    const long long kept = object(number)->number;
    if (type == kCFNumberIntType)
        *static_cast<int *>(value) = static_cast<int>(kept);
    else
        *static_cast<long long *>(value) = kept;
    return object(number)->bytes.isEmpty(); // what does not fit keeps its digits in there
}

CFIndex CFDataGetLength(CFDataRef data) { return object(data)->bytes.size(); }
const UInt8 *CFDataGetBytePtr(CFDataRef data)
{
    return reinterpret_cast<const UInt8 *>(object(data)->bytes.constData());
}

CFMutableDictionaryRef CFDictionaryCreateMutable(CFAllocatorRef, CFIndex, const CFDictionaryKeyCallBacks *,
                                                 const CFDictionaryValueCallBacks *)
{
    return reinterpret_cast<CFMutableDictionaryRef>(made(PlayedObject::Dictionary));
}

void CFDictionarySetValue(CFMutableDictionaryRef dictionary, const void *key, const void *value)
{
    object(dictionary)->pairs.append({key, value});
}

} // extern "C"
