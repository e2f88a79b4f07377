// SPDX-License-Identifier: MIT
#pragma once

#include "widgets/Sheet.h"

class BrewManager;
class PackageDetailView;

/// The sheet with a package's detail and a button that asks for it to be closed.
class DetailSheet final : public Sheet {
    Q_OBJECT

public:
    DetailSheet(const QString& packageID, BrewManager& manager, QWidget* window);

    [[nodiscard]] PackageDetailView* detail() const { return m_detail; }

Q_SIGNALS:
    /// The user wants to see again what the sheet has shown before.
    void backRequested();

private:
    PackageDetailView* m_detail;
};
