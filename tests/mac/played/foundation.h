#pragma once

#include <QString>

@class NSString, NSArray, NSURL, NSError;

namespace corvane::played {

/// The characters of a played text or of a literal.
[[nodiscard]] QString text(NSString *string);
[[nodiscard]] NSString *string(const QString &text);
[[nodiscard]] NSURL *url(const QString &address);
[[nodiscard]] QString text(NSURL *url);
[[nodiscard]] NSError *error(const QString &description);
[[nodiscard]] int count(NSArray *array);
[[nodiscard]] id at(NSArray *array, int index);

/// A copy of a block that outlives the call that the block was given to.
[[nodiscard]] void *kept(const void *block);

} // namespace corvane::played
