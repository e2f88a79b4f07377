// SPDX-License-Identifier: MIT
#pragma once

#include <list>
#include <mutex>
#include <shared_mutex>

/// The pipes of all runs in flight, so that an application that ends can leave them in
/// other hands.
///
/// A `brew` whose reader is gone dies of a broken pipe at its next line, perhaps
/// half-way through an upgrade. Registrations come from the runs' own threads,
/// hence the lock.
class OpenPipes final {
    struct Entry {
        int standardOutput;
        int standardError;
    };

public:
    /// Lists one run's read ends for as long as it lives; a null owner lists nothing.
    class Registration final {
    public:
        Registration(OpenPipes* owner, int standardOutput, int standardError);
        Registration(const Registration&) = delete;
        Registration& operator=(const Registration&) = delete;
        ~Registration();

    private:
        OpenPipes* m_owner;
        std::list<Entry>::iterator m_entry;
    };

    /// Held from before a command is started until it is listed: while it is, nothing is handed
    /// over, since the command would be left out.
    [[nodiscard]] std::shared_lock<std::shared_mutex> startCommand() {
        return std::shared_lock(m_starting);
    }

    /// Starts one small process per pipe that reads it to its end, whatever becomes of this
    /// process. Returns how many runs were handed over.
    int handOver();

private:
    std::shared_mutex m_starting;
    std::mutex m_mutex;
    std::list<Entry> m_entries;
};
