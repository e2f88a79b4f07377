// SPDX-License-Identifier: MIT
#pragma once

#include "OutdatedPackage.h"
#include "views/ListPage.h"

#include <QCoroTask>
#include <QSet>

class IconButton;
class PushButton;

/// The outdated packages, to be upgraded one by one or all together.
class UpdatesView final : public ListPage {
    Q_OBJECT

public:
    UpdatesView(BrewManager& manager, PackageSelection& selection, QWidget* parent = nullptr);

protected:
    void render() override;
    void firstShown() override;

private:
    QCoro::Task<> upgradePackage(OutdatedPackage package);
    QCoro::Task<> upgradeAll();

    /// Names of the packages whose own upgrade is running.
    QSet<QString> m_upgradingPackages;
    bool m_isUpgradingAll{false};
    PushButton* m_updateAllButton;
    IconButton* m_refreshButton{nullptr};
};
