// SPDX-License-Identifier: MIT
#include "pages/BrewNotFoundView.h"

#include "Addresses.h"
#include "L10n.h"
#include "style/LumoraStyle.h"
#include "style/Typography.h"
#include "widgets/DisplayText.h"
#include "widgets/OpenAddress.h"
#include "widgets/SecondaryLabel.h"
#include "widgets/SymbolLabel.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

BrewNotFoundView::BrewNotFoundView(QWidget* parent) : QWidget(parent) {
    constexpr int spacing = 20;
    constexpr int padding = 40;
    constexpr int iconSize = 64;
    constexpr double titleSize = 22;

    auto* const title = new QLabel(L10n::brewNotFound());
    title->setTextFormat(Qt::PlainText);
    title->setFont(Typography::font(titleSize, QFont::Bold));
    title->setObjectName(u"notFoundTitle"_s);
    auto* const explanation = new SecondaryLabel(L10n::brewNotFoundDesc(), Typography::body);
    explanation->setAlignment(Qt::AlignCenter);
    auto* const button = new QPushButton(DisplayText::label(L10n::installHomebrew()));
    button->setObjectName(u"installHomebrewButton"_s);
    LumoraStyle::setProminence(button, LumoraStyle::Prominence::Prominent);
    connect(button, &QPushButton::clicked, this, [] { openAddress(Addresses::homebrew); });

    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(padding, padding, padding, padding);
    layout->setSpacing(spacing);
    layout->addStretch();
    layout->addWidget(
        new SymbolLabel(u"exclamationmark.triangle"_s, iconSize, SymbolLabel::Tone::Outdated), 0,
        Qt::AlignHCenter);
    layout->addWidget(title, 0, Qt::AlignHCenter);
    layout->addWidget(explanation, 0, Qt::AlignHCenter);
    layout->addWidget(button, 0, Qt::AlignHCenter);
    layout->addStretch();
}
