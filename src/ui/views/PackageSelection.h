// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

#include <optional>

/// The identifier of the package whose detail is shown, if any: owned by the root view, set
/// by the pages whose rows are packages.
class PackageSelection final : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    [[nodiscard]] const std::optional<QString>& selectedPackageID() const {
        return m_selectedPackageID;
    }

    void setSelectedPackageID(std::optional<QString> packageID) {
        if (packageID == m_selectedPackageID)
            return;
        m_selectedPackageID = std::move(packageID);
        Q_EMIT changed();
    }

Q_SIGNALS:
    void changed();

private:
    std::optional<QString> m_selectedPackageID;
};
