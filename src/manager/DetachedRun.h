// SPDX-License-Identifier: MIT
#pragma once

#include "RunBrewSync.h"

#include <QPromise>
#include <QStringList>

#include <functional>
#include <memory>
#include <type_traits>

/// Runs `brew` on a thread of its own that nobody waits for, and calls `receive` there.
///
/// Not a thread of the shared pool: that has as many as there are cores, and one long
/// upgrade per core would keep every later command waiting. Without a thread `receive` is called
/// at once. It must not throw.
void startDetached(const QString& brewPath, const QStringList& arguments,
                   std::function<void(RunOutcome)> receive);

/// The same, for whoever awaits the future of what `make` makes of the outcome, on that thread:
/// texts of megabytes would keep the interface from its work.
///
/// The result is shared, so that nothing is copied on its way to the interface thread.
template <class Make>
[[nodiscard]] auto runDetached(const QString& brewPath, const QStringList& arguments, Make make) {
    using Result = std::remove_cvref_t<std::invoke_result_t<Make, RunOutcome>>;
    const auto promise = std::make_shared<QPromise<std::shared_ptr<Result>>>();
    promise->start();
    startDetached(brewPath, arguments, [promise, make](RunOutcome outcome) {
        promise->addResult(std::make_shared<Result>(make(std::move(outcome))));
        promise->finish();
    });
    return promise->future();
}
