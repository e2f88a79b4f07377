// SPDX-License-Identifier: MIT
#pragma once

#include "shell/MessageStrip.h"

#include <optional>

class BrewManager;

/// The manager's last failure, in a strip below the header.
///
/// Closing hides it until the message changes; the manager keeps its message.
class FailureStrip final : public MessageStrip {
    Q_OBJECT

public:
    explicit FailureStrip(BrewManager& manager, QWidget* parent = nullptr);

    /// Whether the user has closed the message that is there.
    [[nodiscard]] bool isClosed() const { return m_isClosed; }

    void setClosed(bool isClosed);

private:
    void setFailure(const std::optional<QString>& failure);

    std::optional<QString> m_failure;
    bool m_isClosed{false};
};
