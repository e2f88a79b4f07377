// SPDX-License-Identifier: MIT
#include "pages/BrewNotFoundView.h"

#include "Addresses.h"
#include "L10n.h"
#include "style/LumoraStyle.h"
#include "style/Theme.h"
#include "style/Typography.h"
#include "widgets/Boxes.h"
#include "widgets/Labels.h"
#include "widgets/Links.h"
#include "widgets/PushButton.h"
#include "widgets/SymbolLabel.h"

using namespace Qt::StringLiterals;

BrewNotFoundView::BrewNotFoundView(QWidget* parent) : QWidget(parent) {
    constexpr int spacing = 20;
    constexpr int padding = 40;
    constexpr int iconSize = 64;
    constexpr double titleSize = 22;
    using Boxes::centered;

    auto* const icon = new SymbolLabel(u"exclamationmark.triangle"_s, iconSize, &Theme::outdated);
    auto* const title =
        new PlainLabel(L10n::brewNotFound(), Typography::font(titleSize, QFont::Bold));
    title->setObjectName(u"notFoundTitle"_s);
    auto* const explanation = new SecondaryLabel(L10n::brewNotFoundDesc(), Typography::body);
    explanation->setAlignment(Qt::AlignCenter);
    auto* const button = new PushButton(L10n::installHomebrew());
    button->setObjectName(u"installHomebrewButton"_s);
    LumoraStyle::setProminence(button, LumoraStyle::Prominence::Prominent);
    connect(button, &PushButton::clicked, this, [] { openAddress(Addresses::homebrew); });
    setLayout(Boxes::column(spacing,
                            {Boxes::stretch(), centered(icon), centered(title),
                             centered(explanation), centered(button), Boxes::stretch()},
                            {padding, padding, padding, padding}));
}
