// SPDX-License-Identifier: MIT
#pragma once

#include <QTemporaryDir>

/// A home folder and a preference store of this test's own, for as long as it lives.
///
/// Nothing of the user's is read or written: HOME and the XDG folders point into a
/// temporary folder, the language is plain English, no shell profile is found, neither the
/// user's nor the system's, there are the fonts of fonts.conf alone, and no session bus.
class FreshHome final {
public:
    FreshHome();

    [[nodiscard]] QString path() const { return m_folder.path(); }

    /// Writes a file below the home folder, making its folders.
    void write(const QString& relativePath, const QByteArray& content) const;

private:
    QTemporaryDir m_folder;
};
