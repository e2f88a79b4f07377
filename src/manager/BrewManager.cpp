// SPDX-License-Identifier: MIT
#include "BrewManager.h"

#include "BrewDiscovery.h"

BrewManager::BrewManager() : BrewManager(BrewDiscovery::usual(homeDirectory())) {}

BrewManager::BrewManager(const BrewDiscovery& discovery)
    : m_brewPath(QString::fromStdString(discovery.run())) {
    if (m_brewPath.isEmpty())
        brewAvailable.set(false);
}
