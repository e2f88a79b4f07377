// SPDX-License-Identifier: MIT
#pragma once

#include <QFuture>
#include <QPromise>

#include <memory>
#include <thread>

/// Calls a function on a thread of its own that nobody waits for, and gives what it returns or
/// throws to whoever awaits the future: how long it takes is decided by whoever has made what is
/// read.
template <class Function>
[[nodiscard]] QFuture<std::invoke_result_t<Function>> inBackground(Function function) {
    using Result = std::invoke_result_t<Function>;
    const auto promise = std::make_shared<QPromise<Result>>();
    promise->start();
    std::thread([promise, function = std::move(function)] {
        try {
            if constexpr (std::is_void_v<Result>)
                function();
            else
                promise->addResult(function());
        } catch (...) {
            promise->setException(std::current_exception());
        }
        promise->finish();
    }).detach();
    return promise->future();
}
