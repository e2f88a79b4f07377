// SPDX-License-Identifier: MIT
#include "AskpassProgram.h"

#include "SessionVariables.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {

/// Nothing where there is none.
QString programNear(const QString& folder) {
    for (const QString& place : {folder, folder + u"/" LUMORA_ASKPASS_FOLDER ""_s}) {
        const QFileInfo program(QDir::cleanPath(place + u"/lumora-askpass"_s));
        if (program.isFile() && program.isExecutable())
            return program.filePath();
    }
    return {};
}

} // namespace

void AskpassProgram::offer(const QString& folder) {
    // brew calls `sudo -A` when it is set, and without it asks on a terminal that isn't there.
    constexpr const char* variable = "SUDO_ASKPASS";
    const QString program = programNear(folder);
    if (!qEnvironmentVariableIsEmpty(variable) || program.isEmpty())
        return;
    qputenv(variable, QFile::encodeName(program));
    SessionVariables::passOn();
}
