#include "ui/decisions/password_hints.h"

#include <QTextBoundaryFinder>

#include <algorithm>

namespace corvane {

namespace {

constexpr int kShortest = 8;

const QString kAllowed = QStringLiteral("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789-_.@+");

} // namespace

bool passwordTooShort(const QString &password)
{
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, password);
    int characters = 0;
    while (finder.toNextBoundary() != -1)
        ++characters;
    return characters < kShortest;
}

bool passwordHasOtherCharacters(const QString &password)
{
    return std::ranges::any_of(password, [](QChar sign) { return !kAllowed.contains(sign); });
}

} // namespace corvane
