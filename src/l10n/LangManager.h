// SPDX-License-Identifier: MIT
#pragma once

#include "Lang.h"
#include "Published.h"

#include <QStringList>

/// Holds the interface language in force and remembers the user's choice of it.
///
/// There is one, shared(); it is made by whoever asks first, from any thread, but its
/// language is read and set on the interface thread. The choice is kept under the key
/// "appLanguage" in the application's default QSettings.
class LangManager final : public ObservableObject {
    Q_OBJECT

public:
    [[nodiscard]] static LangManager& shared();

    [[nodiscard]] const Published<Lang>& current() const { return m_current; }

    /// Takes effect at once and is written to the preferences, also when nothing changes.
    void setCurrent(Lang lang);

    /// The language to start in: a stored code if it is exactly one of ours, else the
    /// first of the system's languages, else English.
    [[nodiscard]] static Lang initialLanguage(const QString& storedCode,
                                              const QStringList& systemLanguages);

private:
    LangManager();

    Published<Lang> m_current;
};
