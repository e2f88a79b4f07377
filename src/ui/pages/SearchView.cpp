// SPDX-License-Identifier: MIT
#include "pages/SearchView.h"

#include "BrewManager.h"
#include "CoroutineParameters.h"
#include "L10n.h"
#include "views/PackageSelection.h"
#include "widgets/RowListView.h"
#include "widgets/SearchField.h"
#include "widgets/StateView.h"

#include <QPointer>
#include <QStackedLayout>

#include <algorithm>
#include <chrono>

using namespace Qt::StringLiterals;

namespace {

constexpr int rowHeight = 37;
constexpr std::chrono::milliseconds searchDelay{500};

QList<SearchResult> ofType(const QList<SearchResult>& results, PackageType type) {
    QList<SearchResult> subset;
    std::ranges::copy_if(results, std::back_inserter(subset),
                         [type](const SearchResult& result) { return result.type == type; });
    return subset;
}

} // namespace

SearchView::SearchView(BrewManager& manager, PackageSelection& selection, QWidget* parent)
    : Page(manager, parent),
      m_selection(selection),
      m_searchField(addSearchField(L10n::searchHomebrew())),
      m_stack(new QStackedLayout(this)),
      m_state(new StateView(this)),
      m_list(new RowListView(rowHeight, RowListView::Selectable::Yes, this)) {
    m_list->setAccessibleName(L10n::search());
    m_stack->addWidget(m_state);
    m_stack->addWidget(m_list);
    m_searchDelay.setSingleShot(true);
    m_searchDelay.setTimerType(Qt::PreciseTimer);
    m_searchDelay.setInterval(searchDelay);

    connect(m_searchField, &SearchField::textChanged, this, &SearchView::searchTextChanged);
    connect(m_searchField, &SearchField::returnPressed, this, &SearchView::performSearch);
    connect(&m_searchDelay, &QTimer::timeout, this, &SearchView::performSearch);
    connect(&m_selection, &PackageSelection::changed, this, [this] { scheduleRender(); });
    connect(m_list, &RowListView::rowChosen, this,
            [this](const QString& id) { m_selection.setId(id); });
    connect(m_list, &RowListView::actionRequested, this,
            [this](int row) { install(m_rows.record(row)); });
}

void SearchView::searchTextChanged(const QString& text) {
    if (text.isEmpty()) {
        m_searchDelay.stop();
        manager().searchResults.set({});
    } else {
        m_searchDelay.start();
    }
    scheduleRender();
}

void SearchView::performSearch() {
    manager().search(m_searchField->text());
}

void SearchView::render() {
    setTitle(L10n::search());
    const QList<SearchResult>& results = *manager().searchResults;
    if (!results.isSharedWith(m_results)) {
        m_results = results;
        m_rows.update(ofType(results, PackageType::formula), ofType(results, PackageType::cask));
        m_list->setRows(m_rows.count(), [this](int row) {
            return m_rows.isHeading(row) ? m_rows.heading(row) : describe(m_rows.record(row));
        });
    } else {
        m_list->refreshRows();
    }
    m_list->setSelectedId(m_selection.id());
    if (!results.isEmpty()) {
        m_stack->setCurrentWidget(m_list);
        return;
    }
    if (*manager().isSearching)
        m_state->showBusy(L10n::searching());
    else
        m_state->showSymbol(u"magnifyingglass"_s, StateView::Tone::Secondary,
                            m_searchField->text().isEmpty() ? L10n::typeToSearch()
                                                            : L10n::noResultsFound());
    m_stack->setCurrentWidget(m_state);
}

Row SearchView::describe(const SearchResult& result) const {
    const bool isCask = result.type == PackageType::cask;
    Row row{
        .id = result.id(),
        .title = result.name,
        .symbol = isCask ? u"macwindow"_s : u"shippingbox"_s,
        .symbolTone = isCask ? Row::Tone::Cask : Row::Tone::Formula,
    };
    if (result.isInstalled)
        row.action = {.kind = RowAction::Kind::Badge, .title = L10n::installed()};
    else if (m_installProgress == result.name)
        row.action = {.kind = RowAction::Kind::Spinner, .title = L10n::install()};
    else
        row.action = {.kind = RowAction::Kind::Button, .title = L10n::install()};
    return row;
}

QCoro::Task<> SearchView::install(SearchResult result) {
    static_assert(takesParametersByValue<&SearchView::install>);
    const QPointer page(this);
    const QPointer brewManager(&manager());
    m_installProgress = result.name;
    scheduleRender();
    const bool succeeded = co_await brewManager->install(result.name, result.type);
    if (page) {
        page->m_installProgress.reset();
        page->scheduleRender();
    }
    if (!succeeded || !brewManager)
        co_return;
    if (result.type == PackageType::cask)
        co_await brewManager->loadCasks();
    else
        co_await brewManager->loadFormulae();
    // By the name of what was installed, whatever the field says by now: its row is to be seen
    // with its mark.
    if (brewManager)
        co_await brewManager->search(result.name);
}
