#include "tests/faults/scene.h"
#include "tests/faults/user_actions.h"
#include "tests/story/story.h"

#include <QCoro/QCoroTask>
#include <QRegularExpression>

namespace corvane::test {

namespace {

void play(const UserAction &action, AppModel &model)
{
    if (action.prepare) action.prepare(model);
    action.forget(model);
    QCoro::waitFor(action.begin(model));
    Story::settle(model);
}

QString missing(const UserAction &action, const AppModel &model)
{
    return action.said(model).isEmpty() ? QStringLiteral("Nothing was said about it.") : QString();
}

/// Times, ports and made-up names differ from one run to the next.
QString result(const UserAction &action, const AppModel &model)
{
    static const QRegularExpression numbers(QStringLiteral("cv-[0-9a-f]+|[0-9]+"));
    return action.said(model).replace(numbers, QStringLiteral("#"));
}

} // namespace

QList<Scene> actionScenes()
{
    QList<Scene> scenes;
    for (const UserAction &action : userActions()) {
        if (!action.said) continue; // it shows all that comes of it at once
        Scene scene{action.name, "protected", [&action](AppModel &model) { play(action, model); },
                    [&action](AppModel &model) { return missing(action, model); }};
        if (!action.turnsRound) scene.result = [&action](AppModel &model) { return result(action, model); };
        scene.isAnAction = true;
        scenes += scene;
    }
    return scenes;
}

} // namespace corvane::test
