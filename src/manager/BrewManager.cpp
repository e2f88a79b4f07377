// SPDX-License-Identifier: MIT
#include "BrewManager.h"

#include "BrewDiscovery.h"
#include "OpenPipes.h"

BrewManager::BrewManager() : BrewManager(BrewDiscovery::usual(homeDirectory())) {}

BrewManager::BrewManager(const BrewDiscovery& discovery)
    : m_brewPath(QString::fromStdString(discovery.run())),
      m_openPipes(std::make_shared<OpenPipes>()) {
    if (m_brewPath.isEmpty())
        brewAvailable.set(false);
}

BrewManager::~BrewManager() = default;

int BrewManager::leaveRunningCommands() {
    return m_openPipes->handOver();
}
