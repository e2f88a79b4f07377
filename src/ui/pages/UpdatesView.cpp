// SPDX-License-Identifier: MIT
#include "pages/UpdatesView.h"

#include "BrewManager.h"
#include "CoroutineParameters.h"
#include "L10n.h"
#include "style/LumoraStyle.h"
#include "style/Symbol.h"
#include "views/PackageSelection.h"
#include "widgets/DisplayText.h"
#include "widgets/IconButton.h"
#include "widgets/RowListView.h"
#include "widgets/StateView.h"

#include <QPointer>
#include <QPushButton>
#include <QStackedLayout>

using namespace Qt::StringLiterals;

namespace {

constexpr int rowHeight = 48;

} // namespace

UpdatesView::UpdatesView(BrewManager& manager, PackageSelection& selection, QWidget* parent)
    : Page(manager, parent),
      m_selection(selection),
      m_updateAllButton(new QPushButton(Symbol::icon(u"arrow.triangle.2.circlepath"_s),
                                        DisplayText::label(L10n::updateAll()))),
      m_stack(new QStackedLayout(this)),
      m_state(new StateView(this)),
      m_list(new RowListView(rowHeight, RowListView::Selectable::Yes, this)) {
    m_updateAllButton->setObjectName(u"updateAllButton"_s);
    m_updateAllButton->setToolTip(DisplayText::toolTip(L10n::updateAllPackages()));
    LumoraStyle::setProminence(m_updateAllButton, LumoraStyle::Prominence::Compact);
    addHeaderControl(m_updateAllButton);
    m_refreshButton = addRefreshButton(L10n::checkForUpdates());
    m_list->setAccessibleName(L10n::updates());
    m_stack->addWidget(m_state);
    m_stack->addWidget(m_list);

    connect(m_updateAllButton, &QPushButton::clicked, this, [this] { upgradeAll(); });
    connect(m_refreshButton, &IconButton::clicked, this,
            [this] { this->manager().loadOutdated(); });
    connect(&m_selection, &PackageSelection::changed, this, [this] { scheduleRender(); });
    connect(m_list, &RowListView::rowChosen, this,
            [this](const QString& id) { m_selection.setId(id); });
    connect(m_list, &RowListView::actionRequested, this,
            [this](int row) { upgradePackage(m_rows.record(row)); });
}

void UpdatesView::firstShown() {
    if (manager().outdatedFormulae->isEmpty() && manager().outdatedCasks->isEmpty())
        manager().loadOutdated();
}

void UpdatesView::render() {
    const bool areOthers = m_rows.update(*manager().outdatedFormulae, *manager().outdatedCasks);
    const qsizetype total = manager().outdatedFormulae->size() + manager().outdatedCasks->size();
    setTitle(u"%1 (%2)"_s.arg(L10n::updates(), QString::number(total)));
    m_updateAllButton->setVisible(total > 0);
    m_updateAllButton->setEnabled(!m_isUpgradingAll && !*manager().isRunningOperation);
    m_refreshButton->setEnabled(!*manager().isLoadingOutdated);

    if (areOthers)
        m_list->setRows(m_rows.count(), [this](int row) {
            return m_rows.isHeading(row) ? m_rows.heading(row) : describe(m_rows.record(row));
        });
    else
        m_list->refreshRows();
    m_list->setSelectedId(m_selection.id());
    if (total > 0) {
        m_stack->setCurrentWidget(m_list);
        return;
    }
    if (*manager().isLoadingOutdated)
        m_state->showBusy(L10n::checkingForUpdates());
    else
        m_state->showSymbol(u"checkmark.circle"_s, StateView::Tone::Good, L10n::allUpToDate(),
                            StateView::TextSize::Title);
    m_stack->setCurrentWidget(m_state);
}

Row UpdatesView::describe(const OutdatedPackage& package) const {
    const bool isCask = package.type == PackageType::cask;
    const bool isUpgrading = m_upgradingPackages.contains(package.name);
    const bool isAnyUpgrading = !m_upgradingPackages.isEmpty() || m_isUpgradingAll;
    return {
        .id = package.id(),
        .title = package.name,
        .subtitle = package.currentVersion,
        .newVersion = package.latestVersion,
        .symbol = isCask ? u"macwindow"_s : u"shippingbox"_s,
        .symbolTone = isCask ? Row::Tone::Cask : Row::Tone::Formula,
        .action = {.kind = isUpgrading ? RowAction::Kind::Spinner : RowAction::Kind::Button,
                   .title = L10n::update(),
                   .isEnabled = !isAnyUpgrading},
    };
}

QCoro::Task<> UpdatesView::upgradePackage(OutdatedPackage package) {
    static_assert(takesParametersByValue<&UpdatesView::upgradePackage>);
    const QPointer page(this);
    const QPointer brewManager(&manager());
    m_upgradingPackages.insert(package.name);
    scheduleRender();
    const bool succeeded = co_await brewManager->upgrade(package.name, package.type);
    if (page) {
        page->m_upgradingPackages.remove(package.name);
        page->scheduleRender();
    }
    if (!succeeded || !brewManager)
        co_return;
    co_await brewManager->loadOutdated();
    if (!brewManager)
        co_return;
    if (package.type == PackageType::cask)
        co_await brewManager->loadCasks();
    else
        co_await brewManager->loadFormulae();
}

QCoro::Task<> UpdatesView::upgradeAll() {
    const QPointer page(this);
    const QPointer brewManager(&manager());
    m_isUpgradingAll = true;
    scheduleRender();
    const bool succeeded = co_await brewManager->upgradeAll();
    if (page) {
        page->m_isUpgradingAll = false;
        page->scheduleRender();
    }
    if (succeeded && brewManager)
        co_await brewManager->refreshAll();
}
