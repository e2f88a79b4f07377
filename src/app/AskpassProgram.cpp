// SPDX-License-Identifier: MIT
#include "AskpassProgram.h"

#include "HelperProgram.h"
#include "SessionVariables.h"

#include <QFile>

using namespace Qt::StringLiterals;

void AskpassProgram::offer(const QString& folder) {
    // brew calls `sudo -A` when it is set, and without it asks on a terminal that isn't there.
    constexpr const char* variable = "SUDO_ASKPASS";
    const QString program = HelperProgram::near(folder, u"lumora-askpass"_s);
    if (!qEnvironmentVariableIsEmpty(variable) || program.isEmpty())
        return;
    qputenv(variable, QFile::encodeName(program));
    SessionVariables::passOn();
}
