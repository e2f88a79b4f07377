// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>
#include <QTemporaryDir>

/// A `brew` whose behaviour is a few lines of shell script.
class FakeBrew final {
public:
    /// `body` runs as a POSIX shell script whose arguments are brew's.
    explicit FakeBrew(const QByteArray& body = ":");

    /// Replaces the script; runs that have started already are not affected.
    void setBody(const QByteArray& body) const;
    /// Takes the script away, as an uninstalled Homebrew would be.
    void remove() const;

    [[nodiscard]] QString path() const { return m_folder.filePath(QStringLiteral("brew")); }

    [[nodiscard]] QString folder() const { return m_folder.path(); }

    /// Script lines that print exactly these bytes.
    [[nodiscard]] QByteArray print(const QByteArray& bytes) const;
    [[nodiscard]] QByteArray printError(const QByteArray& bytes) const;

    /// Script lines that append this run's argument vector to a log.
    [[nodiscard]] QByteArray recordArguments() const;
    /// The argument vectors recorded so far, in the order in which the runs started.
    [[nodiscard]] QList<QStringList> recordedRuns() const;

    /// Script lines that wait until open(gate) is called; a run that outlives this object ends.
    [[nodiscard]] QByteArray waitFor(const QString& gate) const;
    void open(const QString& gate) const;

    /// Script lines that tell the test that the run has come to this point.
    [[nodiscard]] QByteArray reach(const QString& mark) const;
    [[nodiscard]] bool hasReached(const QString& mark) const;

    /// Script lines that wait until as many runs as this are waiting here.
    [[nodiscard]] QByteArray meet(int runs) const;

private:
    QTemporaryDir m_folder;
    mutable int m_printed{};
};
