// SPDX-License-Identifier: MIT
#include "pages/PackageDetailView.h"

#include "BrewManager.h"
#include "CoroutineParameters.h"
#include "L10n.h"
#include "pages/PackageFacts.h"
#include "widgets/Boxes.h"
#include "widgets/Labels.h"
#include "widgets/OutputText.h"
#include "widgets/Spinner.h"
#include "widgets/StateView.h"

#include <QPointer>
#include <QScrollArea>
#include <QStackedLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

PackageDetailView::PackageDetailView(QString packageID, BrewManager& manager, QWidget* parent)
    : View(manager, parent),
      m_packageID(std::move(packageID)),
      m_stack(new QStackedLayout(this)),
      m_notFound(new StateView(this)) {
    constexpr int padding = 16;
    constexpr int sectionSpacing = 16;
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

    QScrollArea* const scroll = Boxes::scrolling(content);
    scroll->setObjectName(u"detailScroll"_s);
    scroll->setAccessibleName(L10n::details());
    // The sheet's rounded corners are to be seen through both; setWidget() fills the content.
    scroll->viewport()->setAutoFillBackground(false);
    content->setAutoFillBackground(false);
    m_found = scroll;
    m_stack->addWidget(m_notFound);
    m_stack->addWidget(m_found);
}

void PackageDetailView::setPackageID(const QString& packageID) {
    m_packageID = packageID;
    scheduleRender();
}

std::optional<BrewPackage> PackageDetailView::findPackage() const {
    for (const QList<BrewPackage>* packages : {&*manager().formulae, &*manager().casks}) {
        const auto found = std::ranges::find(*packages, m_packageID, &BrewPackage::id);
        if (found != packages->end())
            return *found;
    }
    return std::nullopt;
}

void PackageDetailView::render() {
    const std::optional<BrewPackage> package = findPackage();
    if (!package) {
        m_notFound->showSymbol(u"doc.text.magnifyingglass"_s, StateView::Tone::Secondary,
                               L10n::packageNotFound());
        m_stack->setCurrentWidget(m_notFound);
        return;
    }
    if (package != m_shown)
        showPackage(*package);
    if (m_reportedID != m_packageID) {
        m_reportedID = m_packageID;
        loadInfo(*package);
    }
    m_loadingRow->setVisible(m_infoText.isEmpty() && m_isLoadingInfo);
    m_report->setOutput(m_infoText);
    m_stack->setCurrentWidget(m_found);
}

void PackageDetailView::showPackage(const BrewPackage& package) {
    m_shown = package;
    delete m_facts;
    m_facts = new PackageFacts(package);
    m_layout->insertWidget(0, m_facts);
    setAccessibleName(package.name);
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
