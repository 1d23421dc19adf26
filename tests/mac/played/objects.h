#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <utility>

/// One object of the played Core Foundation.
struct PlayedObject {
    enum Kind : unsigned long { Text = 1, Bytes, Number, Boolean, Dictionary };

    explicit PlayedObject(Kind kind);
    ~PlayedObject();

    Kind kind;
    int references = 1;
    QByteArray bytes;
    long long number = 0;
    QList<std::pair<const void *, const void *>> pairs;
};

namespace corvane::played {

/// A new object, with one reference; or one that the system keeps for ever.
[[nodiscard]] PlayedObject *made(PlayedObject::Kind kind, const QByteArray &bytes = {}, long long number = 0);
[[nodiscard]] PlayedObject *lasting(PlayedObject::Kind kind, const QByteArray &bytes = {}, long long number = 0);
/// The object behind a reference; a literal of the source becomes one.
[[nodiscard]] PlayedObject *object(const void *reference);
/// A text as UTF-8, a number, a boolean, or bytes as they are.
[[nodiscard]] QString described(const void *reference);
/// "key=value key=value", in the order in which they were put in.
[[nodiscard]] QString describedPairs(const void *dictionary);
/// Objects that nobody has released yet.
[[nodiscard]] int liveObjects();

} // namespace corvane::played
