// SPDX-License-Identifier: MIT
#include "TrialRun.h"

#include "CompareVersions.h"
#include "RunTool.h"

#include <QCoroFuture>
#include <QProcess>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace {

QProcessEnvironment withoutDisplay() {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(u"DISPLAY"_s);
    environment.remove(u"WAYLAND_DISPLAY"_s);
    return environment;
}

bool names(const QByteArray& answer, const QString& version) {
    const QString line = QString::fromUtf8(answer).trimmed();
    const QString name = u"Lumora "_s;
    return line.startsWith(name) && compareVersions(line.sliced(name.size()), version) == 0;
}

} // namespace

QCoro::Task<bool> answersWithVersion(QString executable, QString version,
                                     std::chrono::milliseconds patience) {
    QProcess process;
    process.setProgram(executable);
    process.setArguments({u"--version"_s});
    process.setProcessEnvironment(withoutDisplay());
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());

    QByteArray answer;
    QObject::connect(&process, &QProcess::readyReadStandardOutput, &process, [&] {
        constexpr qsizetype longest = 1000;
        answer += process.readAllStandardOutput();
        if (answer.size() > longest)
            process.kill();
    });
    QTimer::singleShot(patience, &process, &QProcess::kill);
    const bool hasStarted = co_await runToTheEnd(process);
    const bool isAnswered = hasStarted && process.exitStatus() == QProcess::NormalExit &&
                            process.exitCode() == EXIT_SUCCESS && names(answer, version);
    co_return isAnswered;
}
