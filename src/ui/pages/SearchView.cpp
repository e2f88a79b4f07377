// SPDX-License-Identifier: MIT
#include "pages/SearchView.h"

#include "BrewManager.h"
#include "CoroutineParameters.h"
#include "L10n.h"
#include "pages/PackageActions.h"
#include "pages/PackageRows.h"
#include "style/Theme.h"
#include "widgets/RowListView.h"
#include "widgets/SearchField.h"

#include <QPointer>

#include <algorithm>
#include <chrono>

using namespace Qt::StringLiterals;

namespace {

using Voice = StateView::Voice;

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
    : ListPage(manager, &selection, L10n::search(), rowHeight, parent) {
    SearchField* const field = addSearchField(L10n::searchHomebrew());
    m_searchTask.setSingleShot(true);
    m_searchTask.setTimerType(Qt::PreciseTimer);
    m_searchTask.setInterval(searchDelay);

    list().setSearchField(field);
    list().setFurtherActions([this](const QString& id) {
        return QList{homepageAction(installedPackage(this->manager(), id))};
    });
    connect(field, &SearchField::textChanged, this, &SearchView::searchTextChanged);
    connect(field, &SearchField::returnPressed, this, &SearchView::performSearch);
    connect(&m_searchTask, &QTimer::timeout, this, &SearchView::performSearch);
    manager.isSearching.subscribe(this, [this](bool isSearching) { m_isAnswered = !isSearching; });
}

void SearchView::searchTextChanged(const QString& text) {
    m_isAnswered = false;
    if (text.isEmpty()) {
        m_searchTask.stop();
        manager().searchResults.set({});
    } else {
        m_searchTask.start();
    }
    scheduleRender();
}

void SearchView::performSearch() {
    manager().search(searchText());
}

void SearchView::render() {
    setTitle(L10n::search());
    const QList<SearchResult>& results = *manager().searchResults;
    if (!results.isSharedWith(m_searchResults)) {
        m_searchResults = results;
        m_formulae = ofType(results, PackageType::formula);
        m_casks = ofType(results, PackageType::cask);
    }
    const auto describe = [this](const SearchResult& result) {
        const SearchResultRow row{.result = result,
                                  .installProgress = m_installProgress,
                                  .onInstall = [this, result] { install(result); }};
        return row.toRow();
    };
    list().setRows({section(L10n::formulae(), m_formulae, describe),
                    section(L10n::casks(), m_casks, describe)});
    if (!results.isEmpty())
        showList();
    else if (*manager().isSearching)
        showBusy(L10n::searching());
    else if (searchText().isEmpty())
        showSymbol(u"magnifyingglass"_s, &Theme::secondaryText, L10n::typeToSearch());
    else
        showSymbol(u"magnifyingglass"_s, &Theme::secondaryText, L10n::noResultsFound(),
                   StateView::TextSize::Body, m_isAnswered ? Voice::Aloud : Voice::Quiet);
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
