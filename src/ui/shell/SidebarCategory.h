// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <array>
#include <optional>

class BrewManager;
class LangManager;
class PackageSelection;
class Page;

/// The seven categories of the application, in the order of the sidebar. `count` is none of them.
enum class SidebarCategory { formulae, casks, updates, search, taps, settings, about, count };

inline constexpr auto allSidebarCategories = [] {
    std::array<SidebarCategory, static_cast<std::size_t>(SidebarCategory::count)> all{};
    for (std::size_t i = 0; i < all.size(); ++i)
        all[i] = static_cast<SidebarCategory>(i);
    return all;
}();

/// A fixed English word that identifies the category; never shown.
[[nodiscard]] QString rawValue(SidebarCategory category);
[[nodiscard]] std::optional<SidebarCategory> sidebarCategoryFromRawValue(QStringView text);
/// The name of the category's symbol.
[[nodiscard]] QString icon(SidebarCategory category);
/// The title in the language in force.
[[nodiscard]] QString localizedName(SidebarCategory category);
/// The title of the sidebar's section that the category is in.
[[nodiscard]] QString sectionName(SidebarCategory category);

/// What the pages are made from; all of it outlives them.
struct PageContext final {
    BrewManager& manager;
    LangManager& langManager;
    PackageSelection& selection;
    /// The path of the application's picture, for the About page.
    const QString& aboutPicture;
};

/// A new page for the category, which the caller takes over.
[[nodiscard]] Page* makePage(SidebarCategory category, const PageContext& context);
