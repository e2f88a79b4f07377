// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// The temporary directory that updates are downloaded to, unpacked and started from.
///
/// File names in it are known to everybody, so nobody else may be able to put anything
/// there: on Linux, where the temporary directory is everybody's, it is a folder in it
/// that belongs to the user alone; macOS gives every user a temporary directory.
namespace UpdateFolder {

/// Makes the folder if need be and gives its path; throws UpdateFailure if it can't be
/// written or isn't private.
[[nodiscard]] QString prepare();

/// Makes a folder with these guarantees at this path.
void makePrivate(const QString& path);

} // namespace UpdateFolder
