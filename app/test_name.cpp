#include "app/test_name.h"

#include <QRandomGenerator>

namespace corvane {

QString freshTestName()
{
    constexpr int kDigits = 6;
    constexpr QStringView kHex = u"0123456789abcdef";
    QString name = QStringLiteral("cv-");
    for (int i = 0; i < kDigits; ++i) {
        const auto topBits = static_cast<qsizetype>(QRandomGenerator::system()->generate64() >> 60);
        name += kHex[topBits];
    }
    return name + QStringLiteral(".example.com");
}

} // namespace corvane
