#include "app/admin_password.h"

#include <QRandomGenerator>
#include <QTextBoundaryFinder>

#include <algorithm>

namespace corvane {

namespace {

constexpr int kMinLength = 8;
constexpr int kGeneratedLength = 16;
constexpr QStringView kAllowed = u"abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789-_.@+";
/// No l, o, I, O, 0 or 1: they look alike.
constexpr QStringView kGenerated = u"abcdefghijkmnpqrstuvwxyzABCDEFGHJKLMNPQRSTUVWXYZ23456789";
static_assert(kGenerated.size() == 56);

/// A uniform index into the alphabet: six random bits, drawn again while they lie beyond it.
qsizetype randomIndex()
{
    while (true) {
        const quint32 bits = QRandomGenerator::system()->generate() >> 26;
        if (bits < kGenerated.size()) return bits;
    }
}

} // namespace

bool AdminPassword::isTooShort(const QString &password)
{
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, password);
    for (int length = 0; length < kMinLength; ++length) {
        if (finder.toNextBoundary() < 0) return true;
    }
    return false;
}

bool AdminPassword::hasForbiddenCharacter(const QString &password)
{
    return !std::ranges::all_of(password, [](QChar c) { return kAllowed.contains(c); });
}

std::optional<QString> AdminPassword::problem(const QString &password)
{
    if (isTooShort(password)) return QStringLiteral("Use at least 8 characters.");
    if (hasForbiddenCharacter(password)) return QStringLiteral("Use only letters, digits and - _ . @ +");
    return std::nullopt;
}

QString AdminPassword::generate()
{
    QString password;
    for (int i = 0; i < kGeneratedLength; ++i)
        password += kGenerated[randomIndex()];
    return password;
}

} // namespace corvane
