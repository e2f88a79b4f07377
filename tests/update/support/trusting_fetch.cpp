// SPDX-License-Identifier: MIT
#include "Fetch.h"
#include "FetchRequest.h"

#include <QSslConfiguration>

#include <cstdlib>

/// lumora-fetch, but for trusting also whom a certificate vouches for that the environment names.
/// What is shipped trusts whom the system trusts and listens to nobody.
int main(int argc, char* argv[]) {
    if (const char* const variable = "LUMORA_TRUSTED_CERTIFICATE";
        qEnvironmentVariableIsSet(variable)) {
        auto configuration = QSslConfiguration::defaultConfiguration();
        configuration.setCaCertificates(configuration.caCertificates() +
                                        QSslCertificate::fromPath(qEnvironmentVariable(variable)));
        QSslConfiguration::setDefaultConfiguration(configuration);
    }
    std::_Exit(static_cast<int>(Fetch::run(argc, argv)));
}
