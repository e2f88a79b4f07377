// SPDX-License-Identifier: MIT
#pragma once

#include <QCoreApplication>
#include <QProcessEnvironment>
#include <QStringList>
#include <QtTest>

#include <functional>
#include <map>

/// The test program started again as another process, in which it plays a named part:
/// what a process does as it starts or ends can only be seen from outside of it.
class SecondProcess final {
public:
    /// Does the part's work with its arguments and returns the exit status.
    using Part = std::function<int(const QStringList& arguments)>;
    using Parts = std::map<QString, Part>;

    /// The whole of main(): plays a part if the arguments name one, else runs the tests.
    template <class Test>
    [[nodiscard]] static int main(int argc, char* argv[], const Parts& parts) {
        play(argc, argv, parts);
        const QCoreApplication application(argc, argv);
        Test test;
        return QTest::qExec(&test, argc, argv);
    }

    /// Starts the program in this part and waits until it has ended.
    explicit SecondProcess(
        const QString& part, const QStringList& arguments = {},
        const QProcessEnvironment& environment = QProcessEnvironment::systemEnvironment());

    /// The exit status; -1 if a signal ended it or it never did end.
    [[nodiscard]] int status() const { return m_status; }

    /// What it printed on standard output.
    [[nodiscard]] QByteArray output() const { return m_output; }

    /// A script line that turns a shell into this program in this part.
    [[nodiscard]] static QByteArray scriptLine(const QString& part,
                                               const QStringList& arguments = {});

private:
    /// Ends the process if the arguments name a part.
    static void play(int argc, char* argv[], const Parts& parts);

    int m_status{-1};
    QByteArray m_output;
};
