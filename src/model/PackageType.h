// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <optional>

/// The two kinds of package that Homebrew knows.
enum class PackageType { formula, cask };

/// "formula" or "cask".
[[nodiscard]] QString rawValue(PackageType type);

/// The type with exactly this text value, if there is one.
[[nodiscard]] std::optional<PackageType> packageTypeFromRawValue(QStringView text);

/// A package's identity among all packages: type and name, for example formula-wget.
[[nodiscard]] QString packageID(PackageType type, const QString& name);
