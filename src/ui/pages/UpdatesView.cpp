// SPDX-License-Identifier: MIT
#include "pages/UpdatesView.h"

#include "BrewManager.h"
#include "CoroutineParameters.h"
#include "L10n.h"
#include "pages/PackageActions.h"
#include "pages/PackageRows.h"
#include "style/LumoraStyle.h"
#include "style/Symbol.h"
#include "style/Theme.h"
#include "widgets/DisplayText.h"
#include "widgets/IconButton.h"
#include "widgets/PushButton.h"
#include "widgets/RowListView.h"

#include <QPointer>

using namespace Qt::StringLiterals;

namespace {

constexpr int rowHeight = 48;

} // namespace

UpdatesView::UpdatesView(BrewManager& manager, PackageSelection& selection, QWidget* parent)
    : ListPage(manager, &selection, L10n::updates(), rowHeight, parent),
      m_updateAllButton(
          new PushButton(Symbol::icon(u"arrow.triangle.2.circlepath"_s), L10n::updateAll())) {
    m_updateAllButton->setObjectName(u"updateAllButton"_s);
    DisplayText::setToolTip(m_updateAllButton, L10n::updateAllPackages());
    LumoraStyle::setProminence(m_updateAllButton, LumoraStyle::Prominence::Compact);
    addHeaderControl(m_updateAllButton);
    m_refreshButton = addRefreshButton(L10n::checkForUpdates());

    list().setFurtherActions([this](const QString& id) {
        return QList{homepageAction(installedPackage(this->manager(), id))};
    });
    connect(m_updateAllButton, &PushButton::clicked, this, [this] { upgradeAll(); });
    connect(m_refreshButton, &IconButton::clicked, this,
            [this] { this->manager().loadOutdated(); });
}

void UpdatesView::firstShown() {
    if (manager().outdatedFormulae->isEmpty() && manager().outdatedCasks->isEmpty())
        manager().loadOutdated();
}

void UpdatesView::render() {
    const QList<OutdatedPackage>& formulae = *manager().outdatedFormulae;
    const QList<OutdatedPackage>& casks = *manager().outdatedCasks;
    const qsizetype total = formulae.size() + casks.size();
    setTitle(counted(L10n::updates(), total));
    // First of all, for the focus comes to it when the other button goes.
    m_refreshButton->setEnabled(!*manager().isLoadingOutdated);
    m_updateAllButton->setVisible(total > 0);
    m_updateAllButton->setEnabled(!m_isUpgradingAll && !*manager().isRunningOperation);

    const auto describe = [this](const OutdatedPackage& package) {
        const UpdateRow row{
            .package = package,
            .isUpgrading = m_upgradingPackages.contains(package.name),
            .isAnyUpgrading = !m_upgradingPackages.isEmpty() || m_isUpgradingAll,
            .onUpgrade = [this, package] { upgradePackage(package); },
        };
        return row.toRow();
    };
    list().setRows(
        {section(L10n::formulae(), formulae, describe), section(L10n::casks(), casks, describe)});
    if (total > 0)
        showList();
    else if (*manager().isLoadingOutdated)
        showBusy(L10n::checkingForUpdates());
    else
        showSymbol(u"checkmark.circle"_s, &Theme::good, L10n::allUpToDate(),
                   StateView::TextSize::Title);
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
