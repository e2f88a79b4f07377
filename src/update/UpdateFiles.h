// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArrayView>
#include <QString>

class QIODevice;
class QTemporaryFile;

/// The files of an update: where they lie, and how they get there whole or not at all.
///
/// Their names are known to everybody, so nobody else may be able to put anything where they
/// lie: on Linux, where the temporary directory is everybody's, it is a folder in it that
/// belongs to the user alone; macOS gives every user a temporary directory.
namespace UpdateFiles {

/// Makes the folder if need be and gives its path; throws UpdateFailure if it can't be
/// written or isn't private.
///
/// Where no program may be run from the temporary directory it is in the user's cache: the
/// update script and the new bundle are run where they lie.
[[nodiscard]] QString prepareFolder();

/// Makes a folder with these guarantees at this path.
void makePrivateFolder(const QString& path);

/// Writes all of the bytes; false with the device's error string set if that fails.
///
/// A disk that is full takes what fits, and says why only when it is asked to take the rest.
[[nodiscard]] bool writeAll(QIODevice& device, QByteArrayView bytes);

/// Puts a whole new file at this path or leaves what is there; throws UpdateFailure.
/// A link is replaced, not followed.
void writeAtomically(const QString& path, const QByteArray& content);

/// Gives a written temporary file its final name in the same folder; throws UpdateFailure.
void moveInto(QTemporaryFile& file, const QString& path);

} // namespace UpdateFiles
