// SPDX-License-Identifier: MIT
#include "Lang.h"

using namespace Qt::StringLiterals;

QString rawValue(Lang lang) {
    switch (lang) {
    case Lang::ko:
        return u"ko"_s;
    case Lang::en:
        return u"en"_s;
    case Lang::ja:
        break;
    }
    return u"ja"_s;
}

std::optional<Lang> langFromRawValue(QStringView code) {
    for (const Lang lang : allLangs) {
        if (code == rawValue(lang))
            return lang;
    }
    return std::nullopt;
}

QString displayName(Lang lang) {
    switch (lang) {
    case Lang::ko:
        return u"한국어"_s;
    case Lang::en:
        return u"English"_s;
    case Lang::ja:
        break;
    }
    return u"日本語"_s;
}
