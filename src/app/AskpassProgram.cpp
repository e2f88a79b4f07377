// SPDX-License-Identifier: MIT
#include "AskpassProgram.h"

#include "SessionVariables.h"

#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

void AskpassProgram::offer(const QString& folder) {
    // brew calls `sudo -A` when it is set, and without it asks on a terminal that isn't there.
    constexpr const char* variable = "SUDO_ASKPASS";
    const QFileInfo program(folder + u"/lumora-askpass"_s);
    if (!qEnvironmentVariableIsEmpty(variable) || !program.isFile() || !program.isExecutable())
        return;
    qputenv(variable, QFile::encodeName(program.filePath()));
    SessionVariables::passOn();
}
