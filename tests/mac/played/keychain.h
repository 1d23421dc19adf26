#pragma once

#include <QByteArray>
#include <QStringList>

namespace corvane::played {

/// The played keychain; it notes every question in the diary.
struct Keychain {
    /// "class/service/account=data", one for each item.
    [[nodiscard]] static QStringList items();
    static void clear();
    static void put(const QByteArray &data);
    /// Every question is answered with this status from now on; 0 answers as a keychain does.
    static void refuse(int status);
    /// The answer to a look-up is no byte buffer but a text.
    static void answerWithText(bool on);
};

} // namespace corvane::played
