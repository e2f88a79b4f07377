// SPDX-License-Identifier: MIT
#include "FakeBrew.h"

#include <QDateTime>
#include <QDir>
#include <QFile>

#include <algorithm>
#include <cstdio>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

const QByteArray endOfRecord = "--end-of-record";

void writeFile(const QString& path, const QByteArray& content, bool isProgram = false) {
    // Not by QSaveFile, which waits until the disk has it: some tests write thousands.
    const QString draft = path + u".new"_s;
    QFile file(draft);
    bool isWritten = file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) &&
                     file.write(content) == content.size();
    // Before the file has its name: somebody may be about to run what has it now.
    if (isProgram)
        isWritten = isWritten &&
                    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    file.close();
    // QFile::rename() replaces nothing.
    if (!isWritten || std::rename(QFile::encodeName(draft), QFile::encodeName(path)) != 0)
        qFatal("%s could not be written", qUtf8Printable(path));
}

/// A script whose folder is gone belongs to a test that has given up: it ends, too.
QByteArray waitUntil(const QByteArray& condition, const QString& folder) {
    return "until " + condition + "; do [ -d " + folder.toUtf8() +
           " ] || exit 1; sleep 0.01; done\n";
}

} // namespace

FakeBrew::FakeBrew(const QByteArray& body) {
    setBody(body);
}

void FakeBrew::setBody(const QByteArray& body) const {
    // The program only reads it: what a thread that starts a command holds open for writing, for
    // the moment between fork and exec, can't be executed by anybody ("text file busy").
    const QString script = m_folder.filePath(u"body"_s);
    writeFile(script, body + '\n');
    if (!QFile::exists(path()))
        writeFile(path(), "#!/bin/sh\n. " + script.toUtf8() + '\n', true);
}

void FakeBrew::remove() const {
    QFile::remove(path());
}

QByteArray FakeBrew::print(const QByteArray& bytes) const {
    constexpr qsizetype longest = 4096;
    if (bytes.size() < longest && !bytes.contains('\0')) {
        // What the shell does without another program.
        QByteArray quoted = bytes;
        return "printf '%s' '" + quoted.replace('\'', "'\\''") + "'\n";
    }
    // A file of bytes needs no quoting, and is not read by every run.
    const QString file = m_folder.filePath(u"printed-%1"_s.arg(m_printed++));
    writeFile(file, bytes);
    return "cat " + file.toUtf8() + '\n';
}

QByteArray FakeBrew::printError(const QByteArray& bytes) const {
    return print(bytes).chopped(1) + " >&2\n";
}

QByteArray FakeBrew::recordArguments() const {
    // One file per run, by what the shell does without another program; arguments end in NUL, and
    // the last tells a reader that all are there.
    const QString log = m_folder.filePath(u"runs"_s);
    QDir().mkpath(log);
    return "printf '%s\\0' \"$@\" " + endOfRecord + " > " + log.toUtf8() + "/$$\n";
}

QList<QStringList> FakeBrew::recordedRuns() const {
    QList<QStringList> runs;
    const QDir log(m_folder.filePath(u"runs"_s));
    QFileInfoList entries = log.entryInfoList(QDir::Files, QDir::Name);
    // By when they started, which no program tells to a fraction of a second on every system.
    std::ranges::stable_sort(entries, {}, [](const QFileInfo& run) { return run.lastModified(); });
    for (const QFileInfo& run : std::as_const(entries)) {
        QFile file(run.filePath());
        if (!file.open(QIODevice::ReadOnly))
            qFatal("%s could not be read", qUtf8Printable(file.fileName()));
        QByteArray record = file.readAll();
        if (!record.endsWith(endOfRecord + '\0'))
            continue;
        record.chop(endOfRecord.size() + 2);
        runs.append(QString::fromUtf8(record).split(QChar(u'\0')));
    }
    return runs;
}

QByteArray FakeBrew::waitFor(const QString& gate) const {
    return waitUntil("[ -e " + m_folder.filePath(gate).toUtf8() + " ]", folder());
}

void FakeBrew::open(const QString& gate) const {
    writeFile(m_folder.filePath(gate), {});
}

QByteArray FakeBrew::reach(const QString& mark) const {
    return ": > " + m_folder.filePath(mark).toUtf8() + '\n';
}

bool FakeBrew::hasReached(const QString& mark) const {
    return QFile::exists(m_folder.filePath(mark));
}

QByteArray FakeBrew::meet(int runs) const {
    const QByteArray place = m_folder.filePath(u"meeting"_s).toUtf8();
    return "mkdir -p " + place + "\n: > " + place + "/$$\n" +
           waitUntil("[ $(ls " + place + " | wc -l) -ge " + QByteArray::number(runs) + " ]",
                     folder());
}
