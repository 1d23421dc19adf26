#pragma once

#include <QCoro/QCoroTask>

namespace corvane {

/// Lets a flow run on by itself. An exception that leaves the flow ends the program loudly: flows answer with values.
void launch(QCoro::Task<> flow);

} // namespace corvane
