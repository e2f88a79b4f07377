// SPDX-License-Identifier: MIT
#include "shell/ContentView.h"

#include "BrewManager.h"
#include "L10n.h"
#include "LangManager.h"
#include "pages/BrewNotFoundView.h"
#include "pages/PackageDetailView.h"
#include "shell/DetailColumn.h"
#include "shell/DetailSheet.h"
#include "shell/FailureStrip.h"
#include "shell/FirstFrame.h"
#include "shell/OperationOverlay.h"
#include "shell/OperationStrip.h"
#include "shell/OutputSheet.h"
#include "shell/SidebarView.h"
#include "style/Metrics.h"
#include "views/Page.h"

#include <QSplitter>
#include <QVBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// Leads the Tab key through all that takes it in these parts, one part after the other.
void chainFocus(const QList<QWidget*>& parts) {
    QWidget* last = nullptr;
    for (QWidget* const part : parts) {
        for (QWidget* const stop : QList{part} + part->findChildren<QWidget*>()) {
            if (stop->focusPolicy() == Qt::NoFocus)
                continue;
            if (last != nullptr)
                QWidget::setTabOrder(last, stop);
            last = stop;
        }
    }
}

} // namespace

ContentView::ContentView(BrewManager& manager, LangManager& langManager, QString aboutPicture,
                         QWidget* parent)
    : View(manager, parent),
      m_langManager(langManager),
      m_aboutPicture(std::move(aboutPicture)),
      m_notice(manager),
      m_layout(new QVBoxLayout(this)) {
    m_layout->setContentsMargins(0, 0, 0, 0);
    setMinimumSize(Metrics::minimumWindowWidth, Metrics::minimumWindowHeight);
    connect(&m_selection, &PackageSelection::changed, this, &ContentView::updateSheet);
    connect(&m_notice, &OperationNotice::changed, this, &ContentView::updateNotice);
    m_langManager.current().subscribe(this, [this](Lang) { rebuild(); });
    rebuild();
}

ContentView::~ContentView() = default;

void ContentView::rebuild() {
    removeOverlay();
    // The widgets are others afterwards, but the keyboard is to stay where it was.
    const QWidget* const focused = window()->focusWidget();
    const QString focusedName = focused != nullptr ? focused->objectName() : QString();
    if (m_content != nullptr) {
        m_content->hide();
        m_layout->removeWidget(m_content);
        m_content->deleteLater();
    }
    m_content = *manager().brewAvailable ? makeSplitView() : new BrewNotFoundView(this);
    m_layout->addWidget(m_content);
    if (m_cornerWidget != nullptr)
        m_cornerWidget->raise();
    if (auto* const again =
            focusedName.isEmpty() ? nullptr : m_content->findChild<QWidget*>(focusedName))
        again->setFocus(Qt::OtherFocusReason);

    closeSheet();
    updateSheet();
    if (m_outputSheet)
        openOutput(m_outputSheet->summary());
    updateOverlay();
}

QWidget* ContentView::makeSplitView() {
    auto* const split = new QSplitter(this);
    split->setChildrenCollapsible(false);
    split->setHandleWidth(1);
    m_sidebar = new SidebarView(manager());
    m_sidebar->setMinimumWidth(Metrics::sidebarMinimum);
    m_sidebar->setMaximumWidth(Metrics::sidebarMaximum);
    // A message that was closed stays so in another language.
    const bool isFailureClosed =
        m_detailColumn != nullptr && m_detailColumn->failureStrip()->isClosed();
    m_detailColumn = new DetailColumn(manager(), m_notice);
    m_detailColumn->failureStrip()->setClosed(isFailureClosed);
    split->addWidget(m_sidebar);
    split->addWidget(m_detailColumn);
    // Read before the page: the splitter puts what comes later below, and so in front.
    m_sidebar->lower();
    split->setStretchFactor(1, 1);
    split->setSizes({Metrics::sidebarIdeal - split->handleWidth(), Metrics::windowWidth});
    m_sidebar->setSelection(m_selectedCategory);
    connect(m_detailColumn->operationStrip(), &OperationStrip::outputRequested, this,
            &ContentView::showOutput);
    connect(m_sidebar, &SidebarView::categoryChosen, this, &ContentView::setSelectedCategory);
    connect(m_sidebar, &SidebarView::categoryOpened, this, &ContentView::openCategory);
    showSelectedPage();
    return split;
}

void ContentView::showSelectedPage() {
    if (!m_selectedCategory) {
        m_detailColumn->setPlaceholder(L10n::selectCategory());
        return;
    }
    const bool isPageLeft = m_detailColumn->isAncestorOf(window()->focusWidget());
    m_detailColumn->setPage(
        makePage(*m_selectedCategory, {manager(), m_langManager, m_selection, m_aboutPicture}));
    orderFocus();
    // The keyboard would go to whatever comes next, and that is the menu.
    if (isPageLeft)
        m_sidebar->setFocus(Qt::OtherFocusReason);
    keepClearOfOverlay();
}

/// As all is read, whatever came when: sidebar, header, strips, page, menu.
void ContentView::orderFocus() {
    QList<QWidget*> parts{m_sidebar};
    parts += m_detailColumn->parts();
    if (m_cornerWidget != nullptr)
        parts.append(m_cornerWidget);
    chainFocus(parts);
}

void ContentView::setSelectedCategory(std::optional<SidebarCategory> category) {
    if (category == m_selectedCategory || m_detailColumn == nullptr)
        return;
    m_selectedCategory = category;
    m_selection.setSelectedPackageID(std::nullopt);
    m_sidebar->setSelection(category);
    showSelectedPage();
}

void ContentView::openCategory(SidebarCategory category) {
    const Sheet* const top = Sheet::openOver(window());
    if (top != nullptr && top != m_sheet)
        return;
    setSelectedCategory(category);
    // What the page consists of can be seen by then.
    QMetaObject::invokeMethod(this, &ContentView::beginOnPage, Qt::QueuedConnection);
}

void ContentView::beginOnPage() {
    if (m_detailColumn != nullptr && m_detailColumn->page() != nullptr &&
        Sheet::openOver(window()) == nullptr)
        m_detailColumn->page()->begin();
}

void ContentView::closeSheet() {
    if (m_sheet)
        m_sheet->dismiss();
    m_sheet = nullptr;
}

void ContentView::updateSheet() {
    if (!showsDetail()) {
        closeSheet();
    } else if (m_sheet) {
        m_sheet->detail()->setPackageID(*m_selection.selectedPackageID());
    } else {
        m_sheet = new DetailSheet(*m_selection.selectedPackageID(), manager(), window());
        connect(m_sheet, &Sheet::cancelRequested, this,
                [this] { m_selection.setSelectedPackageID(std::nullopt); });
        connect(m_sheet, &DetailSheet::backRequested, &m_selection, &PackageSelection::goBack);
        connect(m_sheet->detail(), &PackageDetailView::packageRequested, &m_selection,
                &PackageSelection::goOnTo);
    }
}

void ContentView::updateOverlay() {
    if (!*manager().isRunningOperation) {
        removeOverlay();
    } else {
        if (m_overlay == nullptr)
            m_overlay = new OperationOverlay(this);
        m_overlay->setOutput(*manager().operationOutput);
        m_overlay->show();
    }
    keepClearOfOverlay();
}

void ContentView::removeOverlay() {
    const auto hasFocus = [this] {
        return m_overlay != nullptr && m_overlay->isAncestorOf(window()->focusWidget());
    };
    // The keyboard would be nowhere without the transcript that it is in.
    if (hasFocus() && m_detailColumn->page() != nullptr)
        m_detailColumn->page()->enterContent();
    if (hasFocus())
        m_sidebar->setFocus(Qt::OtherFocusReason);
    delete std::exchange(m_overlay, nullptr);
}

/// It can't be moved or closed, so that what lies behind it is out of reach as long as it is there.
void ContentView::keepClearOfOverlay() {
    constexpr int inset = 10;
    const int covered = m_overlay != nullptr ? height() - m_overlay->y() : 0;
    int coveredOfSidebar = covered;
    if (m_cornerWidget != nullptr) {
        const int below = std::max(inset, covered);
        m_cornerWidget->move(inset, height() - below - m_cornerWidget->height());
        if (covered > 0)
            coveredOfSidebar += m_cornerWidget->height();
    }
    if (m_detailColumn == nullptr)
        return;
    m_sidebar->setCoveredHeight(coveredOfSidebar);
    if (m_detailColumn->page() != nullptr)
        m_detailColumn->page()->setCoveredHeight(covered);
}

/// What a sheet covers can't be read: a failure is told within the sight of each, too.
void ContentView::updateNotice() {
    const bool isFailure = m_notice.isOpen() && !m_notice.last()->succeeded;
    for (Sheet* const sheet : Sheet::allOver(window())) {
        OperationStrip* strip = nullptr;
        if (isFailure) {
            strip = new OperationStrip(m_notice, OperationStrip::Place::Sheet, sheet);
            connect(strip, &OperationStrip::outputRequested, this, &ContentView::showOutput);
        }
        sheet->setNotice(strip);
    }
}

void ContentView::showOutput() {
    if (m_notice.last())
        openOutput(*m_notice.last());
}

void ContentView::openOutput(OperationSummary summary) {
    if (m_outputSheet)
        m_outputSheet->dismiss();
    m_outputSheet = new OutputSheet(std::move(summary), window());
}

void ContentView::setCornerWidget(QWidget* widget) {
    m_cornerWidget = widget;
    m_cornerWidget->setParent(this);
    m_cornerWidget->show();
    keepClearOfOverlay();
    if (m_detailColumn != nullptr)
        orderFocus();
}

void ContentView::resizeEvent(QResizeEvent* event) {
    View::resizeEvent(event);
    keepClearOfOverlay();
}

void ContentView::render() {
    updateOverlay();
}

void ContentView::showEvent(QShowEvent* event) {
    View::showEvent(event);
    if (std::exchange(m_wasShown, true) || !*manager().brewAvailable)
        return;
    // They would take the processors that are to paint it.
    manager().holdLoadCommands(FirstFrame::of(window()));
    manager().refreshAll();
}
