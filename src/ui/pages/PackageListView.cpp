// SPDX-License-Identifier: MIT
#include "pages/PackageListView.h"

#include "BrewManager.h"
#include "CoroutineParameters.h"
#include "L10n.h"
#include "pages/PackageActions.h"
#include "pages/PackageRows.h"
#include "style/Theme.h"
#include "widgets/Alert.h"
#include "widgets/IconButton.h"
#include "widgets/RowListView.h"
#include "widgets/SearchField.h"

#include <QKeyEvent>
#include <QLocale>
#include <QPointer>

using namespace Qt::StringLiterals;

namespace {

constexpr int rowHeight = 48;

/// Those whose name or description contains the text, ignoring case as the locale knows it; by
/// reference, since there may be thousands for every key that is pressed.
QList<const BrewPackage*> filtered(const QList<BrewPackage>& packages, const QString& searchText) {
    const QLocale locale;
    // The Turkic languages pair the letters i and ı with İ and I, against Unicode's default.
    const bool isTurkic =
        locale.language() == QLocale::Turkish || locale.language() == QLocale::Azerbaijani;
    const QString sought = isTurkic ? locale.toLower(searchText) : searchText;
    const auto contains = [&](const QString& text) {
        return isTurkic ? locale.toLower(text).contains(sought)
                        : text.contains(sought, Qt::CaseInsensitive);
    };
    QList<const BrewPackage*> matches;
    matches.reserve(packages.size());
    for (const BrewPackage& package : packages) {
        if (sought.isEmpty() || contains(package.name) || contains(package.desc))
            matches.append(&package);
    }
    return matches;
}

Row formulaRow(const BrewPackage& package, const QList<BrewPackage>& formulae,
               const std::function<void()>& onUninstall) {
    return FormulaRow{package, onUninstall, formulae}.toRow();
}

Row caskRow(const BrewPackage& package, const QList<BrewPackage>&,
            const std::function<void()>& onUninstall) {
    return CaskRow{package, onUninstall}.toRow();
}

} // namespace

PackageListView::PackageListView(BrewManager& manager, PackageSelection& selection, Kind kind,
                                 QWidget* parent)
    : ListPage(manager, &selection, kind.title, rowHeight, parent),
      m_kind(std::move(kind)),
      m_searchField(addSearchField(m_kind.filterPlaceholder)),
      m_refreshButton(addRefreshButton(m_kind.refreshHelp)) {
    list().setSearchField(m_searchField);
    list().setFurtherActions([this](const QString& id) { return furtherActions(id); });
    connect(m_searchField, &SearchField::textChanged, this, &PackageListView::scheduleRender);
    connect(m_refreshButton, &IconButton::clicked, this, [this] { m_kind.load(); });
}

PackageListView::~PackageListView() = default;

void PackageListView::render() {
    const QList<BrewPackage>& packages = *m_kind.packages;
    if (!packages.isSharedWith(m_packages) || searchText() != m_filteredBy) {
        m_packages = packages;
        m_filteredBy = searchText();
        m_filteredPackages = filtered(m_packages, m_filteredBy);
        const auto describe = [this, owner = m_packages](const BrewPackage* package) {
            return m_kind.describe(*package, owner,
                                   [this, name = package->name] { askToUninstall(name); });
        };
        list().setRows({section(m_filteredPackages, describe)});
    }
    setTitle(counted(m_kind.title, m_filteredPackages.size()));
    m_refreshButton->setEnabled(!*m_kind.isLoading);
    m_searchField->setVisible(!packages.isEmpty());
    if (!packages.isEmpty())
        showList();
    else if (*m_kind.isLoading)
        showBusy(m_kind.loading);
    else
        showSymbol(m_kind.symbol, &Theme::secondaryText, m_kind.nothingInstalled);
}

void PackageListView::keyPressEvent(QKeyEvent* event) {
    // What the list has no use for comes here.
    if (event->key() == Qt::Key_Escape)
        m_searchField->clear();
    else
        ListPage::keyPressEvent(event);
}

void PackageListView::askToUninstall(const QString& name) {
    if (m_showConfirmUninstall)
        return;
    m_showConfirmUninstall = name;
    Alert::confirm(
        this,
        {.title = m_kind.uninstallTitle,
         .message = L10n::confirmUninstall(name),
         .destructive = L10n::uninstall(),
         .cancel = L10n::cancel()},
        [this, name] { uninstall(name); }, [this] { m_showConfirmUninstall.reset(); });
}

QCoro::Task<> PackageListView::uninstall(QString name) {
    static_assert(takesParametersByValue<&PackageListView::uninstall>);
    const QPointer brewManager(&manager());
    // The page may be gone by then; the list is to be loaded all the same.
    const auto load = m_kind.load;
    if (co_await brewManager->uninstall(name, m_kind.type) && brewManager)
        co_await load();
}

QList<RowAction> PackageListView::furtherActions(const QString& packageID) {
    const std::optional<BrewPackage> package = installedPackage(manager(), packageID);
    const bool canUpgrade = package && package->isOutdated && !*manager().isRunningOperation;
    return {homepageAction(package),
            {.kind = RowAction::Kind::Button,
             .title = L10n::update(),
             .isEnabled = canUpgrade,
             .onTrigger = [this, package] { upgrade(package->name); }}};
}

QCoro::Task<> PackageListView::upgrade(QString name) {
    static_assert(takesParametersByValue<&PackageListView::upgrade>);
    const QPointer brewManager(&manager());
    const auto load = m_kind.load;
    if (!co_await brewManager->upgrade(name, m_kind.type) || !brewManager)
        co_return;
    co_await brewManager->loadOutdated();
    if (brewManager)
        co_await load();
}

FormulaListView::FormulaListView(BrewManager& manager, PackageSelection& selection, QWidget* parent)
    : PackageListView(manager, selection,
                      {
                          .type = PackageType::formula,
                          .packages = manager.formulae,
                          .isLoading = manager.isLoadingFormulae,
                          .load = [&manager] { return manager.loadFormulae(); },
                          .describe = formulaRow,
                          .symbol = u"shippingbox"_s,
                          .title = L10n::formulae(),
                          .loading = L10n::loadingFormulae(),
                          .nothingInstalled = L10n::noFormulaeInstalled(),
                          .filterPlaceholder = L10n::filterFormulae(),
                          .refreshHelp = L10n::refreshFormulaeList(),
                          .uninstallTitle = L10n::uninstallPackage(),
                      },
                      parent) {}

CaskListView::CaskListView(BrewManager& manager, PackageSelection& selection, QWidget* parent)
    : PackageListView(manager, selection,
                      {
                          .type = PackageType::cask,
                          .packages = manager.casks,
                          .isLoading = manager.isLoadingCasks,
                          .load = [&manager] { return manager.loadCasks(); },
                          .describe = caskRow,
                          .symbol = u"macwindow"_s,
                          .title = L10n::casks(),
                          .loading = L10n::loadingCasks(),
                          .nothingInstalled = L10n::noCasksInstalled(),
                          .filterPlaceholder = L10n::filterCasks(),
                          .refreshHelp = L10n::refreshCaskList(),
                          .uninstallTitle = L10n::uninstallCask(),
                      },
                      parent) {}
