// SPDX-License-Identifier: MIT
#include "FreshHome.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QSettings>

#include <clocale>

using namespace Qt::StringLiterals;

namespace {

const QString environmentFile = u".zshenv"_s;

/// The first of the home's files that a shell reads, and so the place to tell it to pass
/// over those of the system that would follow.
const QByteArray withoutSystemProfile = "unsetopt global_rcs\n";

} // namespace

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
    write(environmentFile, {});
    qputenv("FONTCONFIG_FILE", LUMORA_SOURCE_DIR "/tests/support/fonts.conf");
    qputenv("LC_ALL", "C.UTF-8");
    qunsetenv("LANGUAGE");
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent/bus");
    // The application object, older than this in some tests, has set what it found.
    std::setlocale(LC_ALL, "C.UTF-8");
    QCoreApplication::setOrganizationName(u"Lumora"_s);
    QCoreApplication::setApplicationName(u"Lumora"_s);
#ifdef Q_OS_MACOS
    // The system's preferences are the user's own, whatever the home folder is said to be.
    QSettings::setDefaultFormat(QSettings::IniFormat);
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_folder.filePath(u".config"_s));
#endif
}

void FreshHome::write(const QString& relativePath, const QByteArray& content) const {
    const QString path = m_folder.filePath(relativePath);
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    const QByteArray all =
        relativePath == environmentFile ? withoutSystemProfile + content : content;
    if (!file.open(QIODevice::WriteOnly) || file.write(all) != all.size())
        qFatal("%s could not be written", qUtf8Printable(path));
}
