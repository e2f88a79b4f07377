// SPDX-License-Identifier: MIT
#include "SpawnAttributes.h"

#include <QtTest>

#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <string>

class SpawnAttributesTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void startsNothingWithAStreamThatCannotBeConnected();
};

void SpawnAttributesTest::startsNothingWithAStreamThatCannotBeConnected() {
    SpawnAttributes attributes;
    attributes.connect(-1, STDOUT_FILENO);
    attributes.connect(STDERR_FILENO, STDERR_FILENO);
    std::string program = "/bin/sh";
    pid_t pid = -1;
    QCOMPARE(attributes.spawn(pid, {program.data(), nullptr}), EBADF);
    QCOMPARE(pid, -1);
    QCOMPARE(::waitpid(-1, nullptr, WNOHANG), -1);
}

QTEST_GUILESS_MAIN(SpawnAttributesTest)
#include "tst_spawnattributes.moc"
