#pragma once

#include "app/app_model.h"

#include <QCoreApplication>
#include <QCoro/QCoroTask>

namespace corvane::test {

/// Waits until a new model knows its tools and its password.
inline void untilBegun(AppModel &model)
{
    QCoro::waitFor(model.refreshTools());
    while (!model.passwordKnown())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 5);
}

} // namespace corvane::test
