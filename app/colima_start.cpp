#include "app/colima_start.h"

#include "app/app_model.h"
#include "runtime/colima_manager.h"

namespace corvane {

namespace {

bool metLeftovers(const OperationRunner &operation)
{
    return operation.failure().remedy == FailureReading::Remedy::StopColimaFirst;
}

} // namespace

CommandSteps colimaStartSteps(AppModel &model)
{
    const bool leftovers = metLeftovers(*model.installOp()) || metLeftovers(*model.maintOp());
    return ColimaManager::startSteps(leftovers && !model.dockerWorks());
}

bool mayDockerCome(const AppModel &model)
{
    return model.hasDocker() && !model.dockerWorks() && model.engineProblem().isEmpty();
}

} // namespace corvane
