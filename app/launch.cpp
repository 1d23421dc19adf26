#include "app/launch.h"

#include <exception>

namespace corvane {

namespace {

QCoro::Task<> guarded(QCoro::Task<> flow)
{
    try {
        co_await flow;
    } catch (const std::exception &failure) {
        qFatal("A flow ended with an exception: %s", failure.what());
    }
}

} // namespace

void launch(QCoro::Task<> flow) { guarded(std::move(flow)); }

} // namespace corvane
