// SPDX-License-Identifier: MIT
#include "shell/SidebarCategory.h"

#include "L10n.h"
#include "pages/AboutView.h"
#include "pages/PackageListView.h"
#include "pages/SearchView.h"
#include "pages/SettingsView.h"
#include "pages/TapsView.h"
#include "pages/UpdatesView.h"

#include <algorithm>

namespace {

using enum SidebarCategory;

/// All that the window knows of a category.
struct Entry final {
    SidebarCategory category;
    QStringView rawValue;
    QStringView icon;
    L10n::Text name;
    L10n::Text section;
    Page* (*makePage)(const PageContext& context);
};

/// A page whose rows are packages that can be selected.
template <class View>
Page* makeSelecting(const PageContext& context) {
    return new View(context.manager, context.selection);
}

Page* makeTaps(const PageContext& context) {
    return new TapsView(context.manager);
}

Page* makeSettings(const PageContext& context) {
    return new SettingsView(context.langManager, context.manager);
}

Page* makeAbout(const PageContext& context) {
    return new AboutView(context.manager, context.aboutPicture);
}

constexpr Entry entries[]{
    {formulae, u"Formulae", u"shippingbox", L10n::formulae, L10n::packages,
     makeSelecting<FormulaListView>},
    {casks, u"Casks", u"macwindow", L10n::casks, L10n::packages, makeSelecting<CaskListView>},
    {updates, u"Updates", u"arrow.triangle.2.circlepath", L10n::updates, L10n::actions,
     makeSelecting<UpdatesView>},
    {search, u"Search", u"magnifyingglass", L10n::search, L10n::actions, makeSelecting<SearchView>},
    {taps, u"Taps", u"list.bullet", L10n::taps, L10n::system, makeTaps},
    {settings, u"Settings", u"gearshape", L10n::settings, L10n::system, makeSettings},
    {about, u"About", u"info.circle", L10n::about, L10n::system, makeAbout},
};
static_assert(std::ranges::equal(entries, allSidebarCategories, {}, &Entry::category),
              "every category has its entry, in its place");

const Entry& entryOf(SidebarCategory category) {
    return entries[static_cast<std::size_t>(category)];
}

} // namespace

QString rawValue(SidebarCategory category) {
    return entryOf(category).rawValue.toString();
}

std::optional<SidebarCategory> sidebarCategoryFromRawValue(QStringView text) {
    const auto* const found = std::ranges::find(entries, text, &Entry::rawValue);
    return found != std::end(entries) ? std::optional(found->category) : std::nullopt;
}

QString icon(SidebarCategory category) {
    return entryOf(category).icon.toString();
}

QString localizedName(SidebarCategory category) {
    return entryOf(category).name();
}

QString sectionName(SidebarCategory category) {
    return entryOf(category).section();
}

Page* makePage(SidebarCategory category, const PageContext& context) {
    return entryOf(category).makePage(context);
}
