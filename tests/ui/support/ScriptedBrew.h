// SPDX-License-Identifier: MIT
#pragma once

#include "BrewDiscovery.h"
#include "BrewPackage.h"
#include "FakeBrew.h"
#include "OutdatedPackage.h"

#include <QMap>

/// A brew that answers command lines from a table and remembers them.
///
/// A command line that isn't in the table prints nothing and succeeds; at first all lists are
/// empty.
class ScriptedBrew final {
public:
    ScriptedBrew();

    void setFormulae(const QList<BrewPackage>& packages);
    void setCasks(const QList<BrewPackage>& packages);
    void setOutdated(const QList<OutdatedPackage>& packages);
    void setTaps(const QStringList& taps);

    /// What this command line, words joined by blanks, does from now on.
    void answer(const QString& commandLine, const QByteArray& output, int status = 0,
                const QByteArray& error = {});

    /// Lets this command line fail with a word on standard error.
    void fail(const QString& commandLine) { answer(commandLine, {}, 1, "no\n"); }

    /// Runs of this command line wait, from now on, until they are released.
    void hold(const QString& commandLine);
    void release(const QString& commandLine);

    /// The command lines run so far, in the order of their starts.
    [[nodiscard]] QStringList runs() const;
    /// The same, without those that were there when this was called last.
    [[nodiscard]] QStringList newRuns();

    [[nodiscard]] BrewDiscovery discovery() const;

    inline static const QString infoFormulae =
        QStringLiteral("info --json=v2 --installed --formula");
    inline static const QString infoCasks = QStringLiteral("info --json=v2 --installed --cask");
    inline static const QString outdated = QStringLiteral("outdated --json=v2");
    inline static const QString tap = QStringLiteral("tap");

private:
    struct Entry {
        QByteArray script;
        QString gate;
    };

    void write() const;

    FakeBrew m_brew;
    QMap<QString, Entry> m_entries;
    int m_gates{};
    qsizetype m_seen{};
};
