// SPDX-License-Identifier: MIT
#pragma once

#include "BrewAt.h"
#include "BrewManager.h"
#include "LoadCase.h"
#include "PackageNamed.h"
#include "Traces.h"

#include <QCoroTask>
#include <QtTest>

/// A manager with lists that a failure must leave alone.
class Faulty final {
public:
    explicit Faulty(const FakeBrew& brew) : m_manager(brewAt(brew)) {
        m_manager.formulae.set(m_kept);
        m_manager.casks.set(m_kept);
    }

    /// The load's message, or "none".
    [[nodiscard]] QString loadFormulae() {
        QCoro::waitFor(m_manager.loadFormulae());
        return m_manager.errorMessage->value_or(QStringLiteral("none"));
    }

    [[nodiscard]] static const LoadCase& formulaeLoad() {
        return LoadCase::named(QStringLiteral("formulae"));
    }

    [[nodiscard]] bool keptItsLists() const {
        return *m_manager.formulae == m_kept && *m_manager.casks == m_kept;
    }

    /// The operation's transcript and result.
    [[nodiscard]] QString upgrade() {
        const bool succeeded =
            QCoro::waitFor(m_manager.upgrade(QStringLiteral("wget"), PackageType::formula));
        const QString result = succeeded ? QStringLiteral(" (true)") : QStringLiteral(" (false)");
        const QString state =
            *m_manager.isRunningOperation ? QStringLiteral(" still running") : QString();
        return *m_manager.operationOutput + result + state;
    }

    [[nodiscard]] QString doctor() { return QCoro::waitFor(m_manager.doctor()); }

private:
    const QList<BrewPackage> m_kept{packageNamed(QStringLiteral("kept"))};
    BrewManager m_manager;
};

/// Script lines that print so many bytes on a stream, which is given as a redirection.
[[nodiscard]] inline QByteArray flood(int bytes, char character,
                                      const QByteArray& redirection = {}) {
    return "head -c " + QByteArray::number(bytes) + " /dev/zero | tr '\\0' " + character + ' ' +
           redirection + '\n';
}
