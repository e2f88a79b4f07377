// SPDX-License-Identifier: MIT
#pragma once

#include "views/FilteredPackages.h"
#include "views/Page.h"

#include <QCoroTask>

#include <optional>

class IconButton;
class PackageSelection;
class QStackedLayout;
class RowListView;
class SearchField;
class StateView;
struct Row;
template <class T>
class Published;

/// The list of installed packages of one type: filter, details, refresh, uninstall.
class PackageListPage : public Page {
    Q_OBJECT

public:
    /// Where the two types differ.
    struct Kind final {
        PackageType type{};
        Published<QList<BrewPackage>>& packages;
        Published<bool>& isLoading;
        /// Loads `packages` anew; outlives the page.
        std::function<QCoro::Task<>()> load;
        QString symbol{};
        QString title{};
        QString loading{};
        QString nothingInstalled{};
        QString filterPlaceholder{};
        QString refreshHelp{};
        QString uninstallTitle{};
    };

    PackageListPage(BrewManager& manager, PackageSelection& selection, Kind kind,
                    QWidget* parent = nullptr);
    ~PackageListPage() override;

protected:
    void render() override;

private:
    [[nodiscard]] Row describe(const BrewPackage& package) const;
    void askToUninstall(const QString& name);
    QCoro::Task<> uninstall(QString name);

    Kind m_kind;
    PackageSelection& m_selection;
    FilteredPackages m_filtered;
    /// The package whose removal the user is being asked about.
    std::optional<QString> m_showConfirmUninstall;
    SearchField* m_searchField;
    IconButton* m_refreshButton;
    QStackedLayout* m_stack;
    StateView* m_state;
    RowListView* m_list;
};
