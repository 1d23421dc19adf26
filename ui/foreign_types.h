#pragma once

#include "ui/screen_engine.h"

#include <QtQml/qqmlregistration.h>

// How the views name what is below them. The three shared objects come from the engine that runs the view.

namespace corvane {

struct AppInViews {
    Q_GADGET
    QML_FOREIGN(corvane::AppModel)
    QML_NAMED_ELEMENT(App)
    QML_SINGLETON

public:
    static AppModel *create(QQmlEngine *engine, QJSEngine *) { return static_cast<ScreenEngine *>(engine)->app(); }
};

struct LooksInViews {
    Q_GADGET
    QML_FOREIGN(corvane::Looks)
    QML_NAMED_ELEMENT(Looks)
    QML_SINGLETON

public:
    static Looks *create(QQmlEngine *engine, QJSEngine *) { return static_cast<ScreenEngine *>(engine)->looks(); }
};

struct CommandsInViews {
    Q_GADGET
    QML_FOREIGN(corvane::Commands)
    QML_NAMED_ELEMENT(Commands)
    QML_SINGLETON

public:
    static Commands *create(QQmlEngine *engine, QJSEngine *) { return static_cast<ScreenEngine *>(engine)->commands(); }
};

struct OperationRunnerInViews {
    Q_GADGET
    QML_FOREIGN(corvane::OperationRunner)
    QML_NAMED_ELEMENT(OperationRunner)
    QML_UNCREATABLE("Operations belong to the model.")
};

struct RepairInViews {
    Q_GADGET
    QML_FOREIGN(corvane::Repair)
    QML_NAMED_ELEMENT(Repair)
    QML_UNCREATABLE("The model has one.")
};

struct ComebackInViews {
    Q_GADGET
    QML_FOREIGN(corvane::Comeback)
    QML_NAMED_ELEMENT(Comeback)
    QML_UNCREATABLE("The model has one.")
};

struct ListRunInViews {
    Q_GADGET
    QML_FOREIGN(corvane::ListRun)
    QML_NAMED_ELEMENT(ListRun)
    QML_UNCREATABLE("The model has one.")
};

struct PauseLengthInViews {
    Q_GADGET
    QML_FOREIGN(corvane::PauseLength)
    QML_NAMED_ELEMENT(PauseLength)
    QML_UNCREATABLE("A length is only named.")
};

struct RowListInViews {
    Q_GADGET
    QML_FOREIGN(corvane::RowList)
    QML_NAMED_ELEMENT(RowList)
    QML_UNCREATABLE("Lists of rows are decided by the looks.")
};

struct TintInViews {
    Q_GADGET
    QML_FOREIGN(corvane::Tint)
    QML_NAMED_ELEMENT(Tint)
    QML_UNCREATABLE("A tint is only named.")
};

struct PlaceInViews {
    Q_GADGET
    QML_FOREIGN(corvane::Place)
    QML_NAMED_ELEMENT(Place)
    QML_UNCREATABLE("A place is only named.")
};

struct WizardStepInViews {
    Q_GADGET
    QML_FOREIGN(corvane::WizardStep)
    QML_NAMED_ELEMENT(WizardStep)
    QML_UNCREATABLE("A step is only named.")
};

struct BadgeInViews {
    Q_GADGET
    QML_FOREIGN(corvane::Badge)
    QML_NAMED_ELEMENT(badge)
};

struct RowInViews {
    Q_GADGET
    QML_FOREIGN(corvane::Row)
    QML_NAMED_ELEMENT(row)
};

} // namespace corvane
