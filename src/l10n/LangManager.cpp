// SPDX-License-Identifier: MIT
#include "LangManager.h"

#include "Preferences.h"

#include <QLocale>
#include <QSettings>

using namespace Qt::StringLiterals;

namespace {

const QString languageKey = u"appLanguage"_s;

} // namespace

LangManager& LangManager::shared() {
    static LangManager instance;
    return instance;
}

LangManager::LangManager()
    : m_current(*this, initialLanguage(QSettings().value(languageKey).toString(),
                                       QLocale::system().uiLanguages())) {}

void LangManager::setCurrent(Lang lang) {
    m_current.set(lang);
    // Whoever heard of it may have set another one.
    Preferences::store(languageKey, rawValue(*m_current));
}

Lang LangManager::initialLanguage(const QString& storedCode, const QStringList& systemLanguages) {
    if (const auto stored = langFromRawValue(storedCode))
        return *stored;
    const QString preferred = systemLanguages.value(0, u"en"_s);
    for (const Lang lang : {Lang::ko, Lang::ja}) {
        if (preferred.startsWith(rawValue(lang)))
            return lang;
    }
    return Lang::en;
}
