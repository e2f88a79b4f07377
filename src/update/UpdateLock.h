// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <memory>

class FileDescriptor;

/// Keeps every other process from installing an update with files in the same folder, for as
/// long as it lives: the script of the one would remove what that of the other has just put in
/// place.
///
/// The system lets go of it when the process ends, however that comes about.
class UpdateLock final {
public:
    /// Throws UpdateFailure if somebody else has it.
    explicit UpdateLock(const QString& folder);
    ~UpdateLock();

private:
    std::unique_ptr<FileDescriptor> m_folder;
};
