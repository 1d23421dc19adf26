#pragma once

#include <QCoro/QCoroTask>

#include <optional>

namespace corvane::test {

template <class Result>
QCoro::Task<> store(QCoro::Task<Result> task, std::optional<Result> &result)
{
    result.emplace(co_await task);
}

/// Runs the event loop until the task ends; for results that cannot be made out of nothing too.
template <class Result>
Result resultOf(QCoro::Task<Result> task)
{
    std::optional<Result> result;
    QCoro::waitFor(store(std::move(task), result));
    return std::move(*result);
}

} // namespace corvane::test
