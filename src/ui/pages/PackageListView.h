// SPDX-License-Identifier: MIT
#pragma once

#include "BrewPackage.h"
#include "views/ListPage.h"

#include <QCoroTask>

class IconButton;
class SearchField;
template <class T>
class Published;

/// The list of installed packages of one type: filter, details, refresh, uninstall.
class PackageListView : public ListPage {
    Q_OBJECT

public:
    ~PackageListView() override;

protected:
    /// Where the two types differ.
    struct Kind final {
        PackageType type{};
        Published<QList<BrewPackage>>& packages;
        Published<bool>& isLoading;
        /// Loads `packages` anew; outlives the page.
        std::function<QCoro::Task<>()> load;
        Row (*describe)(const BrewPackage& package, const QList<BrewPackage>& packages,
                        const std::function<void()>& onUninstall){};
        QString symbol{};
        QString title{};
        QString loading{};
        QString nothingInstalled{};
        QString filterPlaceholder{};
        QString refreshHelp{};
        QString uninstallTitle{};
    };

    PackageListView(BrewManager& manager, PackageSelection& selection, Kind kind, QWidget* parent);

    void render() override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void askToUninstall(const QString& name);
    QCoro::Task<> uninstall(QString name);
    [[nodiscard]] QList<RowAction> furtherActions(const QString& packageID);
    QCoro::Task<> upgrade(QString name);

    Kind m_kind;
    /// What the filter leaves, of what packages and by what text. Lists share their data.
    QList<const BrewPackage*> m_filteredPackages;
    QList<BrewPackage> m_packages;
    QString m_filteredBy;
    /// The package whose removal the user is being asked about.
    std::optional<QString> m_showConfirmUninstall;
    SearchField* m_searchField;
    IconButton* m_refreshButton;
};

/// The page of the installed formulae.
class FormulaListView final : public PackageListView {
    Q_OBJECT

public:
    FormulaListView(BrewManager& manager, PackageSelection& selection, QWidget* parent = nullptr);
};

/// The page of the installed casks.
class CaskListView final : public PackageListView {
    Q_OBJECT

public:
    CaskListView(BrewManager& manager, PackageSelection& selection, QWidget* parent = nullptr);
};
