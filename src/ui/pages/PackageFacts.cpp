// SPDX-License-Identifier: MIT
#include "pages/PackageFacts.h"

#include "Addresses.h"
#include "BrewPackage.h"
#include "L10n.h"
#include "style/Typography.h"
#include "widgets/Boxes.h"
#include "widgets/DetailBadge.h"
#include "widgets/DetailRow.h"
#include "widgets/DisplayText.h"
#include "widgets/FlowLayout.h"
#include "widgets/Labels.h"
#include "widgets/Links.h"
#include "widgets/SymbolLabel.h"

#include <QUrl>

using namespace Qt::StringLiterals;

namespace {

constexpr int sectionSpacing = 16;
constexpr int badgeSpacing = 6;

/// A block of a headline and what belongs to it.
QVBoxLayout* makeBlock(const QString& headline, int spacing) {
    const QFont font = Typography::digits(Typography::body, QFont::DemiBold);
    return Boxes::column(spacing, {new PlainLabel(headline, font)});
}

} // namespace

PackageFacts::PackageFacts(const BrewPackage& package, QWidget* parent)
    : QWidget(parent), m_layout(Boxes::column(sectionSpacing, {})) {
    setLayout(m_layout);
    addHeader(package);
    m_layout->addWidget(Boxes::hairline());
    addDescription(package);
    addDetails(package);
    addDependencies(package);
}

void PackageFacts::addHeader(const BrewPackage& package) {
    constexpr int iconSize = 36;
    constexpr int iconSpacing = 14;
    constexpr int nameSpacing = 6;
    const bool isCask = package.type == PackageType::cask;

    auto* const name = new ElidedLabel(Typography::font(Typography::pageTitle, QFont::Bold));
    name->setFullText(package.name);
    name->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    name->setObjectName(u"detailName"_s);

    QHBoxLayout* const badges = Boxes::row(
        badgeSpacing, {isCask ? new DetailBadge(L10n::cask(), DetailBadge::Tone::Cask)
                              : new DetailBadge(L10n::formula(), DetailBadge::Tone::Formula),
                       new DetailBadge(u'v' + package.installedVersion, DetailBadge::Tone::Good)});
    if (package.isOutdated)
        badges->addWidget(new DetailBadge(L10n::updateAvailable(), DetailBadge::Tone::Outdated));
    badges->addStretch();

    auto* const icon = new SymbolLabel(isCask ? u"macwindow"_s : u"shippingbox.fill"_s, iconSize,
                                       SymbolLabel::Tone::Accent);
    m_layout->addLayout(
        Boxes::row(iconSpacing, {icon, {Boxes::column(nameSpacing, {name, badges}), 1}}));
}

void PackageFacts::addDescription(const BrewPackage& package) {
    constexpr int spacing = 4;
    if (package.desc.isEmpty())
        return;
    auto* const text = new PlainLabel(DisplayText::paragraph(DisplayText::line(package.desc)));
    text->setWordWrap(true);
    text->setObjectName(u"detailDescription"_s);
    QVBoxLayout* const block = makeBlock(L10n::description(), spacing);
    block->addWidget(text);
    m_layout->addLayout(block);
}

void PackageFacts::addDetails(const BrewPackage& package) {
    constexpr int spacing = 8;
    QVBoxLayout* const block = makeBlock(L10n::details(), spacing);
    block->addWidget(new DetailRow(L10n::name(), package.fullName));
    block->addWidget(new DetailRow(L10n::version(), package.version));
    block->addWidget(new DetailRow(L10n::installedVersion(), package.installedVersion));
    if (!package.homepage.isEmpty()) {
        const bool isAddress = QUrl(package.homepage, QUrl::StrictMode).isValid();
        auto* const link =
            new LinkButton(package.homepage, isAddress ? package.homepage : Addresses::homebrew);
        link->setObjectName(u"homepageLink"_s);
        block->addWidget(new DetailRow(L10n::homepage(), link));
    }
    m_layout->addLayout(block);
}

void PackageFacts::addDependencies(const BrewPackage& package) {
    constexpr int spacing = 6;
    if (package.dependencies.isEmpty())
        return;
    QVBoxLayout* const block =
        makeBlock(L10n::dependencies(static_cast<int>(package.dependencies.size())), spacing);
    auto* const chips = new FlowLayout(spacing);
    for (const QString& dependency : package.dependencies)
        chips->addWidget(new DetailBadge(dependency, DetailBadge::Tone::Neutral));
    block->addLayout(chips);
    m_layout->addLayout(block);
}
