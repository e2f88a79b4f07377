// SPDX-License-Identifier: MIT
#include "WriteAtomically.h"

#include "UpdateFailure.h"
#include "WriteAll.h"

#include <QTemporaryFile>

#include <filesystem>

using namespace Qt::StringLiterals;

void writeAtomically(const QString& path, const QByteArray& content) {
    QTemporaryFile file(path + u".XXXXXX"_s);
    if (!file.open() || !writeAll(file, content))
        throw UpdateFailure(path + u": "_s + file.errorString());
    moveInto(file, path);
}

void moveInto(QTemporaryFile& file, const QString& path) {
    if (!file.flush())
        throw UpdateFailure(path + u": "_s + file.errorString());
    std::error_code error;
    // QFile's own renaming refuses to replace, and its safe writing follows links.
    std::filesystem::rename(file.fileName().toStdString(), path.toStdString(), error);
    if (error)
        throw UpdateFailure(path, error);
    file.setAutoRemove(false);
}
