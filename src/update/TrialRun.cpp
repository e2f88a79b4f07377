// SPDX-License-Identifier: MIT
#include "TrialRun.h"

#include "CompareVersions.h"

#include <QCoroFuture>
#include <QProcess>
#include <QPromise>
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
    QPromise<bool> hasSucceeded;
    hasSucceeded.start();
    const auto end = [&hasSucceeded](bool value) {
        hasSucceeded.addResult(value);
        hasSucceeded.finish();
    };
    QObject::connect(&process, &QProcess::finished, &process,
                     [end](int status, QProcess::ExitStatus ending) {
                         end(ending == QProcess::NormalExit && status == EXIT_SUCCESS);
                     });
    QObject::connect(&process, &QProcess::errorOccurred, &process,
                     [end](QProcess::ProcessError error) {
                         if (error == QProcess::FailedToStart)
                             end(false);
                     });
    QTimer::singleShot(patience, &process, &QProcess::kill);
    process.start(QIODevice::ReadOnly);
    co_return co_await hasSucceeded.future() && names(answer, version);
}
