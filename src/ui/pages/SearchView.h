// SPDX-License-Identifier: MIT
#pragma once

#include "SearchResult.h"
#include "views/ListPage.h"

#include <QCoroTask>
#include <QTimer>

/// Search in Homebrew's catalogue while typing, and installation of what is found.
class SearchView final : public ListPage {
    Q_OBJECT

public:
    SearchView(BrewManager& manager, PackageSelection& selection, QWidget* parent = nullptr);

    /// Nothing can be done here before something is typed.
    void begin() override { focusSearch(); }

protected:
    void render() override;

private:
    void searchTextChanged(const QString& text);
    void performSearch();
    QCoro::Task<> install(SearchResult result);

    /// The search that starts when nothing is typed for a while.
    QTimer m_searchTask;
    /// Whether a search has ended since the text was changed.
    bool m_isAnswered{false};
    /// The name of the hit that is being installed.
    std::optional<QString> m_installProgress;
    /// The hits that the rows show, all together and by type.
    QList<SearchResult> m_searchResults;
    QList<SearchResult> m_formulae;
    QList<SearchResult> m_casks;
};
