// SPDX-License-Identifier: MIT
#include "OpenPipes.h"

#include "SpawnAttributes.h"

#include <fcntl.h>
#include <unistd.h>

#include <string>

namespace {

/// Starts a process that reads the pipe to its end; one for each pipe, so that a command
/// may fill either while it keeps the other open.
bool drain(int pipe) {
    SpawnAttributes attributes;
    attributes.startSession();
    attributes.connect(pipe, STDIN_FILENO);
    attributes.connectToNull(STDOUT_FILENO, O_WRONLY);
    attributes.connectToNull(STDERR_FILENO, O_WRONLY);
    std::string cat = "/bin/cat";
    pid_t pid = -1;
    return attributes.spawn(pid, {cat.data(), nullptr}) == 0;
}

} // namespace

OpenPipes::Registration::Registration(OpenPipes* owner, int standardOutput, int standardError)
    : m_owner(owner) {
    if (m_owner == nullptr)
        return;
    const std::scoped_lock lock(m_owner->m_mutex);
    m_entry = m_owner->m_entries.insert(m_owner->m_entries.end(), {standardOutput, standardError});
}

OpenPipes::Registration::~Registration() {
    if (m_owner == nullptr)
        return;
    const std::scoped_lock lock(m_owner->m_mutex);
    m_owner->m_entries.erase(m_entry);
}

int OpenPipes::handOver() {
    const std::scoped_lock noneStarts(m_starting);
    const std::scoped_lock lock(m_mutex);
    int handedOver = 0;
    for (const Entry& entry : m_entries) {
        const bool drains = drain(entry.standardOutput) && drain(entry.standardError);
        handedOver += drains ? 1 : 0;
    }
    return handedOver;
}
