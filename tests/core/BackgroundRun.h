// SPDX-License-Identifier: MIT
#pragma once

#include "FakeBrew.h"
#include "RunBrewSync.h"

#include <chrono>
#include <future>
#include <thread>

/// runBrewSync() on a thread of its own, which a failing test leaves behind rather than
/// waits for.
class BackgroundRun final {
public:
    explicit BackgroundRun(const FakeBrew& brew, const std::vector<std::string>& args = {}) {
        std::packaged_task<RunOutcome()> run(
            [path = brew.path().toStdString(), args] { return runBrewSync(path, args); });
        m_outcome = run.get_future();
        std::thread thread(std::move(run));
        m_thread = thread.native_handle();
        thread.detach();
    }

    [[nodiscard]] bool isDone() const {
        return m_outcome.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
    }

    /// The result, once isDone().
    [[nodiscard]] CommandResult result() const { return std::get<CommandResult>(m_outcome.get()); }

    /// The thread that runs it; good only until isDone().
    [[nodiscard]] std::thread::native_handle_type thread() const { return m_thread; }

private:
    std::shared_future<RunOutcome> m_outcome;
    std::thread::native_handle_type m_thread{};
};
