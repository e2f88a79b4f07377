// SPDX-License-Identifier: MIT
#include "shell/SidebarCategory.h"

#include "L10n.h"

using namespace Qt::StringLiterals;

namespace {

struct Entry {
    QString rawValue;
    QString icon;
    L10n::Text name;
};

const Entry& entryOf(SidebarCategory category) {
    static const std::array<Entry, allSidebarCategories.size()> entries{{
        {u"Formulae"_s, u"shippingbox"_s, L10n::formulae},
        {u"Casks"_s, u"macwindow"_s, L10n::casks},
        {u"Updates"_s, u"arrow.triangle.2.circlepath"_s, L10n::updates},
        {u"Search"_s, u"magnifyingglass"_s, L10n::search},
        {u"Taps"_s, u"list.bullet"_s, L10n::taps},
        {u"Settings"_s, u"gearshape"_s, L10n::settings},
        {u"About"_s, u"info.circle"_s, L10n::about},
    }};
    return entries.at(static_cast<std::size_t>(category));
}

} // namespace

QString rawValue(SidebarCategory category) {
    return entryOf(category).rawValue;
}

std::optional<SidebarCategory> sidebarCategoryFromRawValue(QStringView text) {
    for (const SidebarCategory category : allSidebarCategories) {
        if (text == rawValue(category))
            return category;
    }
    return std::nullopt;
}

QString icon(SidebarCategory category) {
    return entryOf(category).icon;
}

QString localizedName(SidebarCategory category) {
    return entryOf(category).name();
}
