// SPDX-License-Identifier: MIT
#include "views/PackageListPage.h"

#include "BrewManager.h"
#include "CoroutineParameters.h"
#include "L10n.h"
#include "views/PackageSelection.h"
#include "widgets/Alert.h"
#include "widgets/IconButton.h"
#include "widgets/RowListView.h"
#include "widgets/SearchField.h"
#include "widgets/StateView.h"

#include <QPointer>
#include <QStackedLayout>

using namespace Qt::StringLiterals;

namespace {

constexpr int rowHeight = 48;

} // namespace

PackageListPage::PackageListPage(BrewManager& manager, PackageSelection& selection, Kind kind,
                                 QWidget* parent)
    : Page(manager, parent),
      m_kind(std::move(kind)),
      m_selection(selection),
      m_searchField(addSearchField(m_kind.filterPlaceholder)),
      m_refreshButton(addRefreshButton(m_kind.refreshHelp)),
      m_stack(new QStackedLayout(this)),
      m_state(new StateView(this)),
      m_list(new RowListView(rowHeight, RowListView::Selectable::Yes, this)) {
    m_list->setAccessibleName(m_kind.title);
    m_list->setUniformItemSizes(true);
    m_stack->addWidget(m_state);
    m_stack->addWidget(m_list);

    connect(m_searchField, &SearchField::textChanged, this, [this] { scheduleRender(); });
    connect(m_refreshButton, &IconButton::clicked, this, [this] { m_kind.load(); });
    connect(&m_selection, &PackageSelection::changed, this, [this] { scheduleRender(); });
    connect(m_list, &RowListView::rowChosen, this,
            [this](const QString& id) { m_selection.setId(id); });
    connect(m_list, &RowListView::actionRequested, this,
            [this](int row) { askToUninstall(m_filtered.at(row).name); });
}

PackageListPage::~PackageListPage() = default;

void PackageListPage::render() {
    const QList<BrewPackage>& packages = *m_kind.packages;
    const bool isFiltered = m_filtered.update(packages, m_searchField->text());
    setTitle(u"%1 (%2)"_s.arg(m_kind.title, QString::number(m_filtered.size())));
    m_refreshButton->setEnabled(!*m_kind.isLoading);
    m_searchField->setVisible(!packages.isEmpty());
    if (packages.isEmpty()) {
        if (*m_kind.isLoading)
            m_state->showBusy(m_kind.loading);
        else
            m_state->showSymbol(m_kind.symbol, StateView::Tone::Secondary, m_kind.nothingInstalled);
        m_stack->setCurrentWidget(m_state);
    }
    if (isFiltered)
        m_list->setRows(static_cast<int>(m_filtered.size()),
                        [this](int row) { return describe(m_filtered.at(row)); });
    m_list->setSelectedId(m_selection.id());
    if (!packages.isEmpty())
        m_stack->setCurrentWidget(m_list);
}

Row PackageListPage::describe(const BrewPackage& package) const {
    Row row{
        .id = package.id(),
        .title = package.name,
        .subtitle = package.desc,
        .version = package.version,
        .action = {.kind = RowAction::Kind::Trash,
                   .title = L10n::uninstall(),
                   .toolTip = L10n::uninstall()},
    };
    if (package.isOutdated)
        row.tags.append({L10n::outdated(), RowTag::Tone::Outdated});
    // Casks always count as requested.
    if (!package.installedOnRequest)
        row.tags.append({L10n::dependency(), RowTag::Tone::Neutral});
    return row;
}

void PackageListPage::askToUninstall(const QString& name) {
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

QCoro::Task<> PackageListPage::uninstall(QString name) {
    static_assert(takesParametersByValue<&PackageListPage::uninstall>);
    const QPointer brewManager(&manager());
    // The page may be gone by then; the list is to be loaded all the same.
    const auto load = m_kind.load;
    if (co_await brewManager->uninstall(name, m_kind.type) && brewManager)
        co_await load();
}
