// SPDX-License-Identifier: MIT
#pragma once

#include "SearchResult.h"
#include "views/Page.h"
#include "views/SectionedRows.h"

#include <QCoroTask>
#include <QTimer>

#include <optional>

class PackageSelection;
class QStackedLayout;
class RowListView;
class SearchField;
class StateView;

/// Search in Homebrew's catalogue while typing, and installation of what is found.
class SearchView final : public Page {
    Q_OBJECT

public:
    SearchView(BrewManager& manager, PackageSelection& selection, QWidget* parent = nullptr);

protected:
    void render() override;

private:
    void searchTextChanged(const QString& text);
    void performSearch();
    [[nodiscard]] Row describe(const SearchResult& result) const;
    QCoro::Task<> install(SearchResult result);

    PackageSelection& m_selection;
    /// The search that starts when nothing is typed for a while.
    QTimer m_searchDelay;
    /// The name of the hit that is being installed.
    std::optional<QString> m_installProgress;
    QList<SearchResult> m_results;
    SectionedRows<SearchResult> m_rows;
    SearchField* m_searchField;
    QStackedLayout* m_stack;
    StateView* m_state;
    RowListView* m_list;
};
