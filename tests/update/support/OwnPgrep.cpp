// SPDX-License-Identifier: MIT
#include "OwnPgrep.h"

#include <QCoreApplication>
#include <QFile>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

OwnPgrep::OwnPgrep() {
    const QByteArray script = "#!/bin/sh\nexec '" +
                              QStandardPaths::findExecutable(u"pgrep"_s).toUtf8() + "' -P " +
                              QByteArray::number(QCoreApplication::applicationPid()) + " \"$@\"\n";
    QFile file(m_folder.filePath(u"pgrep"_s));
    if (!file.open(QIODevice::WriteOnly) || file.write(script) != script.size() ||
        !file.setPermissions(QFile::ReadOwner | QFile::ExeOwner))
        qFatal("%s could not be written", qUtf8Printable(file.fileName()));
}
