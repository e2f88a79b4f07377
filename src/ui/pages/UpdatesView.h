// SPDX-License-Identifier: MIT
#pragma once

#include "OutdatedPackage.h"
#include "views/Page.h"
#include "views/SectionedRows.h"

#include <QCoroTask>
#include <QSet>

class IconButton;
class PackageSelection;
class QPushButton;
class QStackedLayout;
class RowListView;
class StateView;

/// The outdated packages, to be upgraded one by one or all together.
class UpdatesView final : public Page {
    Q_OBJECT

public:
    UpdatesView(BrewManager& manager, PackageSelection& selection, QWidget* parent = nullptr);

protected:
    void render() override;
    void firstShown() override;

private:
    [[nodiscard]] Row describe(const OutdatedPackage& package) const;
    QCoro::Task<> upgradePackage(OutdatedPackage package);
    QCoro::Task<> upgradeAll();

    PackageSelection& m_selection;
    /// Names of the packages whose own upgrade is running.
    QSet<QString> m_upgradingPackages;
    bool m_isUpgradingAll{false};
    SectionedRows<OutdatedPackage> m_rows;
    QPushButton* m_updateAllButton;
    IconButton* m_refreshButton{nullptr};
    QStackedLayout* m_stack;
    StateView* m_state;
    RowListView* m_list;
};
