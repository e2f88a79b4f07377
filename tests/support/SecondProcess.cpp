// SPDX-License-Identifier: MIT
#include "SecondProcess.h"

#include <QFileInfo>
#include <QProcess>

#include <cstdio>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace {

const QString partOption = u"--play-part"_s;

/// By the name it was started by: the file can be several test programs.
QString ownProgram() {
    return QFileInfo(QCoreApplication::arguments().constFirst()).absoluteFilePath();
}

QStringList commandFor(const QString& part, const QStringList& arguments) {
    return QStringList{partOption, part} + arguments;
}

} // namespace

SecondProcess::SecondProcess(const QString& part, const QStringList& arguments,
                             const QProcessEnvironment& environment) {
    QProcess process;
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(ownProgram(), commandFor(part, arguments));
    constexpr int longestMilliseconds = 60'000;
    if (process.waitForFinished(longestMilliseconds) &&
        process.exitStatus() == QProcess::NormalExit)
        m_status = process.exitCode();
    m_output = process.readAllStandardOutput();
}

QByteArray SecondProcess::scriptLine(const QString& part, const QStringList& arguments) {
    QByteArray line = "exec '" + ownProgram().toUtf8() + '\'';
    for (const QString& word : commandFor(part, arguments))
        line += " '" + word.toUtf8() + '\'';
    return line + '\n';
}

void SecondProcess::play(int argc, char* argv[], const Parts& parts) {
    QStringList words;
    for (int i = 1; i < argc; ++i)
        words.append(QString::fromLocal8Bit(argv[i]));
    if (words.value(0) != partOption)
        return;
    const auto part = parts.find(words.value(1));
    if (part == parts.end())
        qFatal("There is no part \"%s\"", qUtf8Printable(words.value(1)));
    const int status = part->second(words.sliced(2));
    // Without destructors, as the application ends: a thread that waits for a brew may be at
    // work still.
    std::fflush(stdout);
    std::_Exit(status);
}
