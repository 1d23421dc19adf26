#include "app/operation.h"

#include "app/completion.h"

namespace corvane {

namespace {

/// Gives the result of an operation: when it ends, or at the latest when nobody is left who could tell of its end.
struct Ending {
    std::shared_ptr<Completion<bool>> succeeded;

    ~Ending() { succeeded->complete(false); }
};

} // namespace

QCoro::Task<bool> perform(OperationRunner *runner, QString title, CommandSteps steps)
{
    const auto succeeded = std::make_shared<Completion<bool>>();
    auto ending = std::make_shared<Ending>(succeeded);
    OperationRunner::OnFinish onFinish = [ending](bool well) { ending->succeeded->complete(well); };
    ending.reset(); // the runner alone holds it now
    runner->start(title, steps, std::move(onFinish));
    const bool well = co_await succeeded->wait();
    co_return well;
}

} // namespace corvane
