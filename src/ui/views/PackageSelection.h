// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QStringList>

#include <optional>

/// The identifier of the package whose detail is shown, if any: owned by the root view, set
/// by the pages whose rows are packages. From there the user may go on to others, and back.
class PackageSelection final : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    [[nodiscard]] const std::optional<QString>& selectedPackageID() const {
        return m_selectedPackageID;
    }

    void setSelectedPackageID(const std::optional<QString>& packageID) {
        m_before.clear();
        select(packageID);
    }

    void goOnTo(const QString& packageID) {
        if (m_selectedPackageID && packageID != *m_selectedPackageID)
            m_before.append(*m_selectedPackageID);
        select(packageID);
    }

    /// To where the user has gone on from; does nothing at the first one.
    void goBack() {
        if (!m_before.isEmpty())
            select(m_before.takeLast());
    }

Q_SIGNALS:
    void changed();

private:
    void select(const std::optional<QString>& packageID) {
        if (packageID == m_selectedPackageID)
            return;
        m_selectedPackageID = packageID;
        Q_EMIT changed();
    }

    std::optional<QString> m_selectedPackageID;
    QStringList m_before;
};
