// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QString>

/// A name that a shell, a format string or an option parser could trip over.
struct AwkwardName final {
    const char* what;
    QString name;
};

[[nodiscard]] inline QList<AwkwardName> awkwardNames() {
    using namespace Qt::StringLiterals;
    return {
        {"plain", u"wget"_s},
        {"spaces", u"  two  words "_s},
        {"single quote", u"it's"_s},
        {"only quotes", u"'''"_s},
        {"double quote", u"\"quoted\""_s},
        {"dollar", u"$HOME ${HOME} $(id) `id`"_s},
        {"pattern", u"* ? [a-z] {a,b} ~"_s},
        {"separators", u"a;b & c | d > e < f # g ! h"_s},
        {"backslash", u"a\\nb\\"_s},
        {"format", u"%1 %2 %s %n %%"_s},
        {"newline", u"one\ntwo\n"_s},
        {"dash", u"--force"_s},
        {"not ASCII", u"한국어 日本語 é e\u0301 🍺 \u202Eabc"_s},
        {"empty", u""_s},
    };
}
