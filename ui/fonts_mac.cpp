#include "ui/fonts.h"

#include <QFontDatabase>
#include <QFontInfo>

#include <algorithm>

namespace corvane {

QFont uiFont()
{
    QFont font = QFontDatabase::systemFont(QFontDatabase::GeneralFont);
    font.setPixelSize(std::max(13, QFontInfo(font).pixelSize()));
    return font;
}

QFont fixedFont()
{
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    font.setPixelSize(12);
    return font;
}

} // namespace corvane
