// SPDX-License-Identifier: MIT
#pragma once

#include <QCoreApplication>
#include <QtTest>

/// Lets a test be the only one on the machine: no other process called Lumora is in sight
/// while it runs, and what it mounts nobody else sees.
namespace OwnProcesses {

/// Goes on as a child in a process and mount namespace of its own, where the system allows
/// it (as root on Linux); does nothing elsewhere.
void enter();

/// The whole of main() of such a test.
template <class Test>
[[nodiscard]] int main(int argc, char* argv[]) {
    enter();
    const QCoreApplication application(argc, argv);
    Test test;
    return QTest::qExec(&test, argc, argv);
}

} // namespace OwnProcesses
