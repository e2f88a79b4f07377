// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <optional>

/// The folder Lumora.app that an application runs from.
///
/// macOS's layout serves on Linux, too, with the executable in Contents/bin.
class ApplicationBundle final {
public:
    explicit ApplicationBundle(QString mainPath) : m_mainPath(std::move(mainPath)) {}

    /// The one this process runs from, if it does.
    [[nodiscard]] static std::optional<ApplicationBundle> running();

    /// The short version string of the bundle's Info.plist; "0.0.0" if it has none.
    [[nodiscard]] QString version() const;

    /// Where the application's picture is, if the bundle has one.
    [[nodiscard]] QString picturePath() const;

    /// The innermost bundle around the executable.
    [[nodiscard]] const QString& mainPath() const { return m_mainPath; }

    /// What an update replaces: the path up to its first ".app". Nothing for an empty path.
    [[nodiscard]] std::optional<QString> outermostPath() const;

    /// Where a bundle at this path has its executable.
    [[nodiscard]] static QString executableIn(const QString& bundlePath);

private:
    QString m_mainPath;
};
