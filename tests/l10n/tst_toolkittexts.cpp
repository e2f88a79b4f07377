// SPDX-License-Identifier: MIT
#include "FreshHome.h"
#include "LangManager.h"
#include "ToolkitTexts.h"

#include <QTest>

using namespace Qt::StringLiterals;

class ToolkitTextsTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void speaksTheLanguageInForce_data();
    void speaksTheLanguageInForce();
    void speaksNoLongerThanItLives();

private:
    FreshHome m_home;
};

namespace {

QString copyInMenus() {
    return QCoreApplication::translate("QWidgetTextControl", "&Copy");
}

} // namespace

void ToolkitTextsTest::speaksTheLanguageInForce_data() {
    QTest::addColumn<Lang>("first");
    QTest::addColumn<Lang>("then");
    for (const Lang first : allLangs) {
        for (const Lang then : allLangs)
            QTest::addRow("%s, then %s", qPrintable(rawValue(first)), qPrintable(rawValue(then)))
                << first << then;
    }
}

void ToolkitTextsTest::speaksTheLanguageInForce() {
    QFETCH(Lang, first);
    QFETCH(Lang, then);
    const QMap<Lang, QString> words{
        {Lang::ko, u"복사(&C)"_s}, {Lang::en, u"&Copy"_s}, {Lang::ja, u"コピー(&C)"_s}};
    LangManager& manager = LangManager::shared();
    manager.setCurrent(first);
    const ToolkitTexts texts(manager);
    QCOMPARE(copyInMenus(), words.value(first));
    QCOMPARE(QCoreApplication::translate("QLineEdit", "&Copy"), words.value(first));
    manager.setCurrent(then);
    QCOMPARE(copyInMenus(), words.value(then));
}

void ToolkitTextsTest::speaksNoLongerThanItLives() {
    LangManager& manager = LangManager::shared();
    manager.setCurrent(Lang::ko);
    { const ToolkitTexts texts(manager); }
    QCOMPARE(copyInMenus(), u"&Copy"_s);
    manager.setCurrent(Lang::ja);
    QCOMPARE(copyInMenus(), u"&Copy"_s);
}

QTEST_GUILESS_MAIN(ToolkitTextsTest)
#include "tst_toolkittexts.moc"
