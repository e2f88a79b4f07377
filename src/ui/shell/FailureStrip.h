// SPDX-License-Identifier: MIT
#pragma once

#include "views/View.h"

#include <optional>

class ElidedLabel;
class IconButton;

/// The manager's last failure, in a slim strip below the header; it takes no room without one.
///
/// Closing hides it until the message changes; the manager keeps its message.
class FailureStrip final : public View {
    Q_OBJECT

public:
    explicit FailureStrip(BrewManager& manager, QWidget* parent = nullptr);

    [[nodiscard]] QString message() const;

    /// Whether the user has closed the message that is there.
    [[nodiscard]] bool isClosed() const { return m_isClosed; }

    void setClosed(bool isClosed);

protected:
    void render() override;
    void paintEvent(QPaintEvent* event) override;

private:
    ElidedLabel* m_message;
    IconButton* m_close;
    std::optional<QString> m_lastMessage;
    bool m_isClosed{false};
};
