// SPDX-License-Identifier: MIT
#include "views/View.h"

#include "BrewManager.h"

View::View(BrewManager& manager, QWidget* parent) : QWidget(parent), m_manager(manager) {
    connect(&manager, &BrewManager::objectWillChange, this, &View::scheduleRender);
    scheduleRender();
}

void View::scheduleRender() {
    if (std::exchange(m_isRenderDue, true))
        return;
    QMetaObject::invokeMethod(this, &View::renderNow, Qt::QueuedConnection);
}

void View::renderNow() {
    if (std::exchange(m_isRenderDue, false))
        render();
}

void View::showEvent(QShowEvent* event) {
    // Nobody is to see the widgets in the state they were constructed in.
    renderNow();
    QWidget::showEvent(event);
}
