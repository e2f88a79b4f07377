// SPDX-License-Identifier: MIT
#include "ToolkitTexts.h"

#include "LangManager.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

ToolkitTexts::ToolkitTexts(const LangManager& langManager, QObject* parent) : QObject(parent) {
    langManager.current().subscribe(this, [this](Lang lang) { speak(lang); });
    speak(*langManager.current());
}

void ToolkitTexts::speak(Lang lang) {
    QCoreApplication::removeTranslator(&m_translator);
    // English is what it speaks by itself.
    if (lang != Lang::en && m_translator.load(u":/toolkit/qtbase_"_s + rawValue(lang)))
        QCoreApplication::installTranslator(&m_translator);
}
