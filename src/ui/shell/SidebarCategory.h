// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <array>
#include <optional>

/// The seven categories of the application, in the order of the sidebar.
enum class SidebarCategory { formulae, casks, updates, search, taps, settings, about };

inline constexpr std::array allSidebarCategories{
    SidebarCategory::formulae, SidebarCategory::casks, SidebarCategory::updates,
    SidebarCategory::search,   SidebarCategory::taps,  SidebarCategory::settings,
    SidebarCategory::about};

/// A fixed English word that identifies the category; never shown.
[[nodiscard]] QString rawValue(SidebarCategory category);
[[nodiscard]] std::optional<SidebarCategory> sidebarCategoryFromRawValue(QStringView text);
/// The name of the category's symbol.
[[nodiscard]] QString icon(SidebarCategory category);
/// The title in the language in force.
[[nodiscard]] QString localizedName(SidebarCategory category);
