// SPDX-License-Identifier: MIT
#include "HelperProgram.h"

#include <QDir>
#include <QFileInfo>

using namespace Qt::StringLiterals;

QString HelperProgram::near(const QString& folder, const QString& name) {
    for (const QString& place : {folder, folder + u"/" LUMORA_HELPER_FOLDER ""_s}) {
        const QFileInfo program(QDir::cleanPath(place + u'/' + name));
        if (program.isFile() && program.isExecutable())
            return program.filePath();
    }
    return {};
}
