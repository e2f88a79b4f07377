// SPDX-License-Identifier: MIT
#include "Lang.h"

namespace {

struct Names final {
    QStringView code;
    QStringView own;
};

/// In the order of Lang.
constexpr Names allNames[]{{u"ko", u"한국어"}, {u"en", u"English"}, {u"ja", u"日本語"}};
static_assert(std::size(allNames) == allLangs.size());

const Names& namesOf(Lang lang) {
    return allNames[static_cast<std::size_t>(lang)];
}

} // namespace

QString rawValue(Lang lang) {
    return namesOf(lang).code.toString();
}

std::optional<Lang> langFromRawValue(QStringView code) {
    for (const Lang lang : allLangs) {
        if (code == namesOf(lang).code)
            return lang;
    }
    return std::nullopt;
}

QString displayName(Lang lang) {
    return namesOf(lang).own.toString();
}
