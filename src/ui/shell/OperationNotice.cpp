// SPDX-License-Identifier: MIT
#include "shell/OperationNotice.h"

#include "BrewManager.h"

OperationNotice::OperationNotice(BrewManager& manager, QObject* parent) : QObject(parent) {
    connect(&manager, &BrewManager::operationStarted, this, &OperationNotice::close);
    connect(&manager, &BrewManager::operationEnded, this, [this](const OperationReport& report) {
        m_last.emplace(report);
        setOpen(true);
    });
}

void OperationNotice::close() {
    if (m_isOpen)
        setOpen(false);
}

void OperationNotice::setOpen(bool isOpen) {
    m_isOpen = isOpen;
    Q_EMIT changed();
}
