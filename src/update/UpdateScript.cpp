// SPDX-License-Identifier: MIT
#include "UpdateScript.h"

#include "ApplicationBundle.h"
#include "RunTool.h"
#include "UpdateFailure.h"

#include <QFileInfo>
#include <QStandardPaths>

#include <algorithm>
#include <cerrno>

using namespace Qt::StringLiterals;

namespace {

QString quoted(const QString& path) {
    return u'"' + path + u'"';
}

/// Stands for whatever isn't the same in every locale or has a meaning of its own.
QString patternFor(const QString& path) {
    QString pattern;
    for (const QChar character : path) {
        const bool isPlain = character.unicode() < 0x80 && character.isLetterOrNumber();
        pattern += isPlain || character == u'/' ? QString(character) : u".+"_s;
    }
    return pattern;
}

/// Each after a blank, as a word of a command line.
QString words(const QStringList& arguments) {
    QString words;
    for (QString argument : arguments)
        words += u" '"_s + argument.replace(u'\'', u"'\\''"_s) + u'\'';
    return words;
}

QString startingLine(const QString& appPath, const QStringList& arguments) {
#ifdef Q_OS_MACOS
    return u"open "_s + quoted(appPath) +
           (arguments.isEmpty() ? QString() : u" --args"_s + words(arguments));
#else
    // A session of its own keeps it out of reach of whatever ends the script's.
    return u"setsid "_s + quoted(ApplicationBundle::executableIn(appPath)) + words(arguments) +
           u" > /dev/null 2>&1 &"_s;
#endif
}

} // namespace

QString UpdateScript::text() const {
    const QStringList lines{
        u"#!/bin/bash"_s,
        u"for i in $(seq 1 30); do"_s,
        u"    if ! pgrep -x \"Lumora\" > /dev/null 2>&1; then"_s,
        u"        break"_s,
        u"    fi"_s,
        u"    sleep 1"_s,
        u"done"_s,
        u"sleep 1"_s,
        u"rm -rf "_s + quoted(appPath),
        u"mv "_s + quoted(newPath) + u' ' + quoted(appPath),
        u"rm -f "_s + quoted(archivePath),
        u"rm -rf "_s + quoted(unpackFolder),
        u"rm -f "_s + quoted(scriptPath),
        startingLine(appPath, arguments),
    };
    return lines.join(u'\n');
}

void UpdateScript::checkTools() {
#ifdef Q_OS_MACOS
    const QStringList tools{u"bash"_s, u"pgrep"_s, u"seq"_s, u"nohup"_s};
#else
    const QStringList tools{u"bash"_s, u"pgrep"_s, u"seq"_s, u"nohup"_s, u"setsid"_s};
#endif
    for (const QString& tool : tools) {
        if (QStandardPaths::findExecutable(tool).isEmpty())
            throw UpdateFailure(tool, ENOENT);
    }
}

QCoro::Task<bool> UpdateScript::isAtWork(QString scriptPath) {
    // It removes itself at its end: without a file there is no need to look for a process.
    if (!QFileInfo::exists(scriptPath))
        co_return false;
    constexpr int found = 0;
    const QStringList arguments{u"-f"_s, patternFor(scriptPath)};
    co_return co_await runTool(u"/usr/bin/pgrep"_s, arguments) == found;
}

bool UpdateScript::canName(const QString& path) {
    return std::ranges::none_of(
        path, [](QChar character) { return QStringView(u"\"'$`\\").contains(character); });
}
