// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

class BrewManager;

/// A widget that agrees with the manager's state: whatever changes, it is rendered once per
/// turn of the event loop, after all values are in place.
class View : public QWidget {
    Q_OBJECT

public:
    /// The manager outlives the view.
    explicit View(BrewManager& manager, QWidget* parent = nullptr);

protected:
    [[nodiscard]] BrewManager& manager() const { return m_manager; }

    /// Call it after a change of the view's own state.
    void scheduleRender();
    /// Makes the widgets agree with the state. It writes nothing to the manager.
    virtual void render() = 0;

    void showEvent(QShowEvent* event) override;

private:
    void renderNow();

    BrewManager& m_manager;
    bool m_isRenderDue{false};
};
