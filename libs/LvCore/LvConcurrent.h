#pragma once

#include "lvcore_export.h"

#include <QList>

#include <functional>
#include <iterator>
#include <optional>
#include <type_traits>
#include <utility>
#include <vector>

/**
 * Blocking loops on the global thread pool: the caller hands out the work, takes part in it and waits.
 *
 * Whether a call fans out at all is one shared rule, mayFanOut(). The calls nest freely: helpers are taken
 * from the pool only where it has a thread to spare, so a pool full of waiting callers cannot lock itself up.
 */
namespace LvConcurrent
{

/// Above this number of active threads in the global pool a worker thread starts no parallel work of its own.
/// Three times the ideal thread count at start-up; change it only while nothing runs in parallel.
extern LVCORE_EXPORT int maxRunningThreads;

/// Whether the calling thread is the application's main thread; false while there is no application.
[[nodiscard]] LVCORE_EXPORT bool isMainThread();

/// The shared rule: the main thread may always fan out, any other while fewer than maxRunningThreads threads
/// of the global pool are active.
[[nodiscard]] LVCORE_EXPORT bool mayFanOut();

/// Calls the work with each index from 0 to count - 1, once, in several threads where the rule allows it, and
/// returns when all is done. The work must be safe to call from several threads at once.
LVCORE_EXPORT void forEachIndex(qsizetype count, const std::function<void(qsizetype)>& work);

/// The results of the function for all items, in the order of the items. The function must be safe to call
/// from several threads at once.
template <class Sequence, class Function>
auto blockingMapped(const Sequence& sequence, const Function& function)
{
    using Item = decltype(*std::cbegin(sequence));
    using Result = std::decay_t<std::invoke_result_t<const Function&, Item>>;
    const auto first = std::cbegin(sequence);
    std::vector<std::optional<Result>> results(
        static_cast<std::size_t>(std::distance(first, std::cend(sequence))));
    forEachIndex(static_cast<qsizetype>(results.size()), [&](qsizetype index) {
        results[static_cast<std::size_t>(index)].emplace(std::invoke(function, *std::next(first, index)));
    });
    QList<Result> list;
    list.reserve(static_cast<qsizetype>(results.size()));
    for (std::optional<Result>& result : results) {
        list.append(*std::move(result));
    }
    return list;
}

/// Calls the function with each item of the sequence; items of a sequence that is not const may be changed in
/// place. The function must be safe to call from several threads at once.
template <class Sequence, class Function>
void blockingMap(Sequence&& sequence, const Function& function)
{
    const auto first = std::begin(sequence); // detaches a shared list once, before the threads see it
    forEachIndex(static_cast<qsizetype>(std::distance(first, std::end(sequence))),
                 [&](qsizetype index) { std::invoke(function, *std::next(first, index)); });
}

} // namespace LvConcurrent
