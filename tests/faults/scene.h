#pragma once

#include "tests/flows/flow_test.h"

namespace corvane::test {

/// A part of the story that is played again and again, each time with another command going wrong.
struct Scene {
    const char *name;
    /// The state of the Mac in which it begins.
    const char *state;
    std::function<void(AppModel &)> play;
    /// What the user is left without: a result or a sentence that is missing; empty when nothing is.
    std::function<QString(AppModel &)> missing;
    /// What it came to, the same each time that nothing goes wrong; none where a second time does something else.
    std::function<QString(AppModel &)> result = {};
    /// It begins on a Mac on which every action of the user's makes sense.
    bool isAnAction = false;
};

/// Parts of the story with several actions, and then each action of the user's by itself.
[[nodiscard]] const QList<Scene> &scenes();
[[nodiscard]] QList<Scene> actionScenes();

/// One command that goes wrong: which tool, how, and at which of its calls.
struct Mishap {
    QString tool;
    QString kind = {};
    int call = 1;

    [[nodiscard]] QString order() const { return QStringLiteral("fault %1 %2 --at %3").arg(tool, kind).arg(call); }
};

} // namespace corvane::test
