// SPDX-License-Identifier: MIT
#pragma once

#include "views/ListPage.h"

#include <QCoroTask>
#include <QPointer>

class AddTapSheet;
class IconButton;

/// The configured taps, to be added to and removed from.
class TapsView final : public ListPage {
    Q_OBJECT

public:
    explicit TapsView(BrewManager& manager, QWidget* parent = nullptr);
    ~TapsView() override;

protected:
    void render() override;
    void firstShown() override;

private:
    void showAddSheet();
    void askToRemove(const QString& name);
    QCoro::Task<> addTap(QString name);
    QCoro::Task<> removeTap(QString name);

    bool m_isAddingTap{false};
    /// The tap whose removal the user is being asked about.
    std::optional<QString> m_showConfirmRemove;
    /// Lies over the whole window, so it isn't a child of this page's.
    QPointer<AddTapSheet> m_addSheet;
    IconButton* m_refreshButton;
};
