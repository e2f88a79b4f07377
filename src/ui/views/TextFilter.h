// SPDX-License-Identifier: MIT
#pragma once

#include <QLocale>
#include <QString>

/// Tests whether texts contain a typed text, ignoring case as the current locale knows it.
class TextFilter final {
public:
    explicit TextFilter(const QString& typed);

    [[nodiscard]] bool matches(const QString& text) const;

private:
    QLocale m_locale;
    /// The Turkic languages pair the letters i and ı with İ and I, against Unicode's default.
    bool m_needsLocale;
    QString m_typed;
};
