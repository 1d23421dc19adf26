#pragma once

#include <QByteArray>
#include <QImage>
#include <QList>
#include <QString>

namespace corvane::played {

/// What a test turns on the played Mac, and sees of it.
struct Mac {
    // The session

    /// The Apple event that is being handled, by its four letters; empty when there is none.
    static QByteArray eventId;
    static QByteArray quitReason;
    static int activities;

    // What the system tells its applications

    static void wakeUp();
    static void changeNetwork();
    [[nodiscard]] static int observers();
    static bool storeOpens;

    // Login items

    static long loginItemStatus;
    static long statusAfter;
    static QString loginItemRefusal;

    // The desktop

    static bool opens;
    static QString installed;
    static bool hidden;
    struct Window {
        QString name;
        bool visible = false;
        bool canBeMain = false;
    };
    static QList<Window> windows;

    // The menu bar

    /// What the item's picture draws on a screen of that scale.
    [[nodiscard]] static QImage drawn(double scale);
};

} // namespace corvane::played
