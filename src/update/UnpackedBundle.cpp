// SPDX-License-Identifier: MIT
#include "UnpackedBundle.h"

#include "ApplicationBundle.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <filesystem>

using namespace Qt::StringLiterals;

namespace fs = std::filesystem;

namespace {

bool leadsOut(const fs::path& link, const fs::path& folder) {
    std::error_code error;
    // From the target as it is written: there may be nothing at it yet.
    fs::path target = fs::read_symlink(link, error);
    if (!error)
        target = fs::weakly_canonical(link.parent_path() / target, error);
    if (error)
        return true;
    return std::ranges::mismatch(folder, target).in1 != folder.end();
}

bool hasLinkLeadingOut(const fs::path& bundle) {
    std::error_code error;
    const fs::path folder = fs::canonical(bundle, error);
    for (fs::recursive_directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        if (entry->is_symlink(error) && leadsOut(entry->path(), folder))
            return true;
    }
    // What can't be looked into can't be vouched for.
    return static_cast<bool>(error);
}

bool agreesWithManifest(const QString& bundle) {
    QFile manifest(bundle + u"/Contents/Resources/manifest.txt"_s);
    if (!manifest.exists())
        return true;
    if (!manifest.open(QIODevice::ReadOnly))
        return false;
    // On a full disk the manifest, too, ends early.
    bool isNumber = false;
    qlonglong missing = manifest.readLine().trimmed().toLongLong(&isNumber);
    for (; !manifest.atEnd(); --missing) {
        const QString line = QString::fromUtf8(manifest.readLine().chopped(1));
        const QFileInfo file(bundle + u'/' + line.section(u' ', 1));
        if (!file.isFile() || QString::number(file.size()) != line.section(u' ', 0, 0))
            return false;
    }
    return isNumber && missing == 0;
}

} // namespace

bool UnpackedBundle::isWhole(const QString& path) {
    const QFileInfo bundle(path);
    return bundle.isDir() && !bundle.isSymLink() && !hasLinkLeadingOut(path.toStdString()) &&
           QFileInfo(ApplicationBundle::executableIn(path)).isFile() && agreesWithManifest(path);
}
