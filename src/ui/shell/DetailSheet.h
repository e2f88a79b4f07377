// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QPointer>

class BrewManager;
class PackageDetailView;
class Sheet;

/// The sheet with a package's detail and a button that closes it.
class DetailSheet final : public QObject {
    Q_OBJECT

public:
    /// Lies over `window`, which owns it.
    DetailSheet(const QString& packageID, BrewManager& manager, QWidget* window);

    void dismiss();

    [[nodiscard]] PackageDetailView* detail() const { return m_detail; }

Q_SIGNALS:
    /// The user wants it closed: by its button or by Escape.
    void closeRequested();

private:
    QPointer<Sheet> m_sheet;
    PackageDetailView* m_detail;
};
