// SPDX-License-Identifier: MIT
#pragma once

class QByteArray;
class QString;
class QTemporaryFile;

/// Puts a whole new file at this path or leaves what is there; throws UpdateFailure.
/// A link is replaced, not followed.
void writeAtomically(const QString& path, const QByteArray& content);

/// Gives a written temporary file its final name in the same folder; throws UpdateFailure.
void moveInto(QTemporaryFile& file, const QString& path);
