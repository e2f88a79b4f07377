// SPDX-License-Identifier: MIT
#pragma once

#include "shell/OperationSummary.h"

#include <QObject>

#include <optional>

class BrewManager;

/// What the shell has to tell of the last operation that ended.
///
/// It is told until it is closed or until another operation starts; of two that overlap the one
/// that ends last stays.
class OperationNotice final : public QObject {
    Q_OBJECT

public:
    explicit OperationNotice(BrewManager& manager, QObject* parent = nullptr);

    /// The last operation that ended, whether it is still told or not.
    [[nodiscard]] const std::optional<OperationSummary>& last() const { return m_last; }

    /// Whether it is still to be told.
    [[nodiscard]] bool isOpen() const { return m_isOpen; }

    void close();

Q_SIGNALS:
    void changed();

private:
    void setOpen(bool isOpen);

    std::optional<OperationSummary> m_last;
    bool m_isOpen{false};
};
