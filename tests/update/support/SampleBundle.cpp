// SPDX-License-Identifier: MIT
#include "SampleBundle.h"

#include "ApplicationBundle.h"

#include <QDirIterator>
#include <QFile>
#include <QProcess>

using namespace Qt::StringLiterals;

namespace {

QByteArray contentOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// A line of a bundle's manifest.
QByteArray entry(qint64 size, const QString& path) {
    return QByteArray::number(size) + ' ' + path.toUtf8() + '\n';
}

} // namespace

SampleBundle::SampleBundle(QString path, QString version, qint64 ballast)
    : m_path(std::move(path)) {
    const QByteArray name = version.toUtf8();
    write(u"Contents/Info.plist"_s,
          "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\"><dict>"
          "<key>CFBundleShortVersionString</key><string>" +
              name + "</string></dict></plist>\n");
    write(u"Contents/Resources/Lumora.png"_s, "a picture of " + name + '\n');
    const QString program = executable();
    const QByteArray script = "#!/bin/sh\n[ $# -gt 0 ] && echo Lumora " + name + " && exit\necho " +
                              name + " > \"${0%/*/*/*/*}/started\"\n";
    write(program.sliced(m_path.size() + 1), script);
    QFile::setPermissions(program, QFile::permissions(program) | QFile::ExeOwner);
    QByteArrayList files{entry(script.size(), program.sliced(m_path.size() + 1))};
    if (ballast > 0) {
        write(u"Contents/lib/ballast.so"_s, QByteArray(ballast, '\0'));
        files.append(entry(ballast, u"Contents/lib/ballast.so"_s));
    }
    files.prepend(QByteArray::number(files.size()) + '\n');
    write(u"Contents/Resources/manifest.txt"_s, files.join());
}

QString SampleBundle::executable() const {
    return ApplicationBundle::executableIn(m_path);
}

void SampleBundle::write(const QString& relativePath, const QByteArray& content) const {
    const QString path = m_path + u'/' + relativePath;
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("%s could not be written", qUtf8Printable(path));
}

QByteArray SampleBundle::snapshot(const QString& folder) {
    QStringList paths;
    QDirIterator entries(folder, QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden,
                         QDirIterator::Subdirectories);
    while (entries.hasNext())
        paths.append(entries.next());
    paths.sort();
    QByteArray snapshot;
    for (const QString& path : paths) {
        const QFileInfo entry(path);
        snapshot += path.toUtf8() + '\n';
        if (entry.isSymLink()) {
            snapshot += entry.symLinkTarget().toUtf8();
        } else if (entry.isFile()) {
            // Not what this user may do: that depends on the file system, too.
            constexpr int mode = 0x7077;
            snapshot += QByteArray::number(int(entry.permissions()) & mode, 16) + ' ';
            snapshot += contentOf(path);
        }
    }
    return snapshot;
}

QString SampleBundle::startedVersion(const QString& bundle) {
    QProcess process;
    process.start(ApplicationBundle::executableIn(bundle), {u"--version"_s});
    process.waitForFinished();
    return QString::fromUtf8(process.readAll()).trimmed().section(u' ', 1);
}

QString SampleBundle::lastStarted() const {
    return QString::fromUtf8(contentOf(QFileInfo(m_path).path() + u"/started"_s)).trimmed();
}
