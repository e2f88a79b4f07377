// SPDX-License-Identifier: MIT
#include "pages/PackageDetailView.h"

#include "Addresses.h"
#include "BrewManager.h"
#include "CoroutineParameters.h"
#include "L10n.h"
#include "pages/PackageActions.h"
#include "style/Theme.h"
#include "style/Typography.h"
#include "widgets/Boxes.h"
#include "widgets/ChipButton.h"
#include "widgets/DetailBadge.h"
#include "widgets/DetailRow.h"
#include "widgets/DisplayText.h"
#include "widgets/FlowLayout.h"
#include "widgets/Labels.h"
#include "widgets/Links.h"
#include "widgets/OutputText.h"
#include "widgets/ScrollPane.h"
#include "widgets/Spinner.h"
#include "widgets/StateView.h"

#include <QPointer>
#include <QScrollBar>
#include <QStackedLayout>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace {

constexpr int sectionSpacing = 16;

/// A block of a headline and what belongs to it.
QVBoxLayout* makeBlock(const QString& headline, int spacing) {
    const QFont font = Typography::digits(Typography::body, QFont::DemiBold);
    return Boxes::column(spacing, {new PlainLabel(headline, font)});
}

QLayout* headerOf(const BrewPackage& package) {
    constexpr int iconSize = 36;
    constexpr int iconSpacing = 14;
    constexpr int nameSpacing = 6;
    constexpr int badgeSpacing = 6;
    const bool isCask = package.type == PackageType::cask;

    auto* const name = new ElidedLabel(Typography::font(Typography::pageTitle, QFont::Bold));
    name->setFullText(package.name);
    name->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    name->setObjectName(u"detailName"_s);

    auto* const version = new DetailBadge(u'v' + package.installedVersion, DetailBadge::Tone::Good);
    QHBoxLayout* const badges = Boxes::row(
        badgeSpacing, {isCask ? new DetailBadge(L10n::cask(), DetailBadge::Tone::Cask)
                              : new DetailBadge(L10n::formula(), DetailBadge::Tone::Formula),
                       version});
    if (package.isOutdated)
        badges->addWidget(new DetailBadge(L10n::updateAvailable(), DetailBadge::Tone::Outdated));
    badges->addStretch();
    // Of the badges this one alone can be too long for their line.
    version->setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);

    auto* const icon =
        new SymbolLabel(isCask ? u"macwindow"_s : u"shippingbox.fill"_s, iconSize, &Theme::accent);
    return Boxes::row(iconSpacing, {icon, {Boxes::column(nameSpacing, {name, badges}), 1}});
}

QLayout* descriptionOf(const BrewPackage& package) {
    constexpr int spacing = 4;
    auto* const text = new PlainLabel(DisplayText::paragraph(DisplayText::line(package.desc)));
    text->setWordWrap(true);
    text->setObjectName(u"detailDescription"_s);
    QVBoxLayout* const block = makeBlock(L10n::description(), spacing);
    block->addWidget(text);
    return block;
}

DetailRow* makeHomepageRow(const BrewPackage& package) {
    const QString& homepage = package.homepage;
    // What is no address at all leads to Homebrew's own page instead.
    const bool isAddress = QUrl(homepage, QUrl::StrictMode).isValid();
    if (isAddress && !canOpenAddress(homepage))
        return new DetailRow(L10n::homepage(), homepage, QFont::Medium);
    auto* const link = new LinkButton(homepage, isAddress ? homepage : Addresses::homebrew);
    link->setObjectName(u"homepageLink"_s);
    return new DetailRow(L10n::homepage(), link);
}

QLayout* detailsOf(const BrewPackage& package) {
    constexpr int spacing = 8;
    QVBoxLayout* const block = makeBlock(L10n::details(), spacing);
    block->addWidget(new DetailRow(L10n::name(), package.fullName));
    block->addWidget(new DetailRow(L10n::version(), package.version));
    block->addWidget(new DetailRow(L10n::installedVersion(), package.installedVersion));
    if (!package.homepage.isEmpty())
        block->addWidget(makeHomepageRow(package));
    return block;
}

} // namespace

PackageDetailView::PackageDetailView(QString packageID, BrewManager& manager, QWidget* parent)
    : View(manager, parent),
      m_packageID(std::move(packageID)),
      m_stack(new QStackedLayout(this)),
      m_notFound(new StateView(this)) {
    constexpr int padding = 16 - ScrollPane::focusMargin;
    constexpr int reportSpacing = 6;
    constexpr int rowSpacing = 8;

    m_loadingRow = new QWidget;
    m_loadingRow->setLayout(
        Boxes::row(rowSpacing, {new Spinner(Spinner::Size::Small),
                                new PlainLabel(L10n::loadingInfo()), Boxes::stretch()}));
    // Homebrew's own words, in every language.
    m_report = new OutputSection(u"brew info"_s, reportSpacing);
    m_report->setObjectName(u"infoReport"_s);

    auto* const content = new QWidget;
    m_layout = Boxes::column(sectionSpacing, {m_loadingRow, m_report, Boxes::stretch()},
                             {padding, padding, padding, padding});
    content->setLayout(m_layout);

    m_found = new ScrollPane(content);
    m_found->setObjectName(u"detailScroll"_s);
    m_found->setAccessibleName(L10n::details());
    m_stack->addWidget(m_notFound);
    m_stack->addWidget(m_found);
}

void PackageDetailView::setPackageID(const QString& packageID) {
    m_packageID = packageID;
    scheduleRender();
}

void PackageDetailView::render() {
    const std::optional<BrewPackage> package = installedPackage(manager(), m_packageID);
    if (!package) {
        m_shown.reset();
        m_notFound->showSymbol(u"doc.text.magnifyingglass"_s, &Theme::secondaryText,
                               L10n::packageNotFound());
        m_stack->setCurrentWidget(m_notFound);
        Q_EMIT titleChanged(L10n::packageNotFound());
        return;
    }
    const QHash openable = installedFormulae(manager(), package->dependencies);
    if (package != m_shown || openable != m_openable) {
        m_openable = openable;
        showPackage(*package);
    }
    if (m_reportedID != m_packageID) {
        m_reportedID = m_packageID;
        loadInfo(*package);
    }
    m_loadingRow->setVisible(m_infoText.isEmpty() && m_isLoadingInfo);
    m_report->setOutput(m_infoText);
    m_stack->setCurrentWidget(m_found);
}

void PackageDetailView::showPackage(const BrewPackage& package) {
    const bool isAnother = !m_shown || m_shown->id() != package.id();
    const bool hadFocus = m_facts != nullptr && m_facts->isAncestorOf(window()->focusWidget());
    if (hadFocus)
        m_found->setFocus(Qt::OtherFocusReason);
    m_shown = package;
    delete m_facts;
    m_facts = makeFacts(package);
    m_layout->insertWidget(0, m_facts);
    // Read before the report, too.
    m_facts->lower();
    orderFocus();
    if (isAnother)
        m_found->verticalScrollBar()->setValue(0);
    Q_EMIT titleChanged(DisplayText::line(package.name));
}

/// What is known of the package without asking brew again.
QWidget* PackageDetailView::makeFacts(const BrewPackage& package) {
    QVBoxLayout* const layout =
        Boxes::column(sectionSpacing, {headerOf(package), Boxes::hairline()});
    if (!package.desc.isEmpty())
        layout->addLayout(descriptionOf(package));
    layout->addLayout(detailsOf(package));
    if (!package.dependencies.isEmpty())
        layout->addLayout(dependenciesOf(package));
    auto* const facts = new QWidget;
    facts->setLayout(layout);
    return facts;
}

QLayout* PackageDetailView::dependenciesOf(const BrewPackage& package) {
    constexpr int spacing = 6;
    auto* const chips = new FlowLayout(spacing);
    for (const QString& dependency : package.dependencies) {
        const QString id = m_openable.value(dependency);
        if (id.isEmpty()) {
            chips->addWidget(new DetailBadge(dependency, DetailBadge::Tone::Neutral));
            continue;
        }
        auto* const chip = new ChipButton(dependency);
        connect(chip, &ChipButton::clicked, this, [this, id] { Q_EMIT packageRequested(id); });
        chips->addWidget(chip);
    }
    QVBoxLayout* const block =
        makeBlock(L10n::dependencies(static_cast<int>(package.dependencies.size())), spacing);
    block->addLayout(chips);
    return block;
}

/// The facts are made last but come first.
void PackageDetailView::orderFocus() {
    QWidget* last = m_found;
    for (QWidget* const stop : m_facts->findChildren<QWidget*>()) {
        if (stop->focusPolicy() == Qt::NoFocus)
            continue;
        setTabOrder(last, stop);
        last = stop;
    }
}

QCoro::Task<> PackageDetailView::loadInfo(BrewPackage package) {
    static_assert(takesParametersByValue<&PackageDetailView::loadInfo>);
    const QPointer page(this);
    m_isLoadingInfo = true;
    const QString text = co_await manager().getPackageInfo(package.name, package.type);
    if (!page)
        co_return;
    page->m_infoText = text;
    page->m_isLoadingInfo = false;
    page->scheduleRender();
}
