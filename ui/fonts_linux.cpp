#include "ui/fonts.h"

#include <QFontDatabase>
#include <QFontInfo>

#include <algorithm>

namespace corvane {

namespace {

constexpr int kPlainSize = 13;
constexpr int kFixedSize = 12;

QFont firstOf(const QStringList &families, QFontDatabase::SystemFont fallback, int size)
{
    QFont font = QFontDatabase::systemFont(fallback);
    for (const QString &family : families) {
        if (!QFontDatabase::hasFamily(family)) continue;
        font = QFont(family);
        break;
    }
    font.setPixelSize(size);
    return font;
}

} // namespace

QFont uiFont()
{
    const int wanted = QFontInfo(QFontDatabase::systemFont(QFontDatabase::GeneralFont)).pixelSize();
    return firstOf({QStringLiteral("Inter")}, QFontDatabase::GeneralFont, std::max(kPlainSize, wanted));
}

QFont fixedFont()
{
    const QStringList families{QStringLiteral("JetBrains Mono"), QStringLiteral("DejaVu Sans Mono")};
    return firstOf(families, QFontDatabase::FixedFont, kFixedSize);
}

} // namespace corvane
