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

    [[nodiscard]] const std::optional<QString>& id() const { return m_id; }

    void setId(std::optional<QString> id) {
        if (id == m_id)
            return;
        m_id = std::move(id);
        Q_EMIT changed();
    }

Q_SIGNALS:
    void changed();

private:
    std::optional<QString> m_id;
};
