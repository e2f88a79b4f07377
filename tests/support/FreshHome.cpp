// SPDX-License-Identifier: MIT
#include "FreshHome.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>

using namespace Qt::StringLiterals;

FreshHome::FreshHome() {
    Q_ASSERT(m_folder.isValid());
    const auto point = [this](const char* variable, const QString& folder) {
        const QString path = QDir::cleanPath(m_folder.filePath(folder));
        QDir().mkpath(path);
        qputenv(variable, path.toUtf8());
    };
    point("HOME", u"."_s);
    point("XDG_CONFIG_HOME", u".config"_s);
    point("XDG_CACHE_HOME", u".cache"_s);
    point("XDG_DATA_HOME", u".local/share"_s);
    // An inherited ZDOTDIR would bring the user's own profile back.
    qunsetenv("ZDOTDIR");
    qputenv("LC_ALL", "C.UTF-8");
    qunsetenv("LANGUAGE");
    QCoreApplication::setOrganizationName(u"Lumora"_s);
    QCoreApplication::setApplicationName(u"Lumora"_s);
}

void FreshHome::write(const QString& relativePath, const QByteArray& content) const {
    const QString path = m_folder.filePath(relativePath);
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("%s could not be written", qUtf8Printable(path));
}
