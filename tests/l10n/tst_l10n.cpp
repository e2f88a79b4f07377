// SPDX-License-Identifier: MIT
#include "FreshHome.h"
#include "L10n.h"
#include "LangManager.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

#include <functional>
#include <limits>

using namespace Qt::StringLiterals;

/// Every text in every language, held against a table written apart from the code.
class L10nTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void knowsEveryEntryOfTheTable();
    void hasTheTextInEveryLanguage_data();
    void hasTheTextInEveryLanguage();
    void insertsTheArgumentAsItIs_data();
    void insertsTheArgumentAsItIs();
    void insertsNumbersPlainly_data();
    void insertsNumbersPlainly();
    void keepsHomebrewsOwnWords();
    void followsAChangeOfLanguage();

private:
    FreshHome m_home;
    QJsonArray m_table;
};

namespace {

using PlainText = const L10n::Text*;
using Template = const L10n::TextWith<QString>*;

const QMap<QString, PlainText>& plainTexts() {
    static const QMap<QString, PlainText> texts{
        {u"packages"_s, &L10n::packages},
        {u"actions"_s, &L10n::actions},
        {u"system"_s, &L10n::system},
        {u"formulae"_s, &L10n::formulae},
        {u"casks"_s, &L10n::casks},
        {u"updates"_s, &L10n::updates},
        {u"search"_s, &L10n::search},
        {u"taps"_s, &L10n::taps},
        {u"settings"_s, &L10n::settings},
        {u"about"_s, &L10n::about},
        {u"cancel"_s, &L10n::cancel},
        {u"close"_s, &L10n::close},
        {u"install"_s, &L10n::install},
        {u"uninstall"_s, &L10n::uninstall},
        {u"update"_s, &L10n::update},
        {u"updateAll"_s, &L10n::updateAll},
        {u"remove"_s, &L10n::remove},
        {u"add"_s, &L10n::add},
        {u"installed"_s, &L10n::installed},
        {u"outdated"_s, &L10n::outdated},
        {u"dependency"_s, &L10n::dependency},
        {u"preview"_s, &L10n::preview},
        {u"output"_s, &L10n::output},
        {u"running"_s, &L10n::running},
        {u"language"_s, &L10n::language},
        {u"loadingFormulae"_s, &L10n::loadingFormulae},
        {u"noFormulaeInstalled"_s, &L10n::noFormulaeInstalled},
        {u"filterFormulae"_s, &L10n::filterFormulae},
        {u"refreshFormulaeList"_s, &L10n::refreshFormulaeList},
        {u"uninstallPackage"_s, &L10n::uninstallPackage},
        {u"loadingCasks"_s, &L10n::loadingCasks},
        {u"noCasksInstalled"_s, &L10n::noCasksInstalled},
        {u"filterCasks"_s, &L10n::filterCasks},
        {u"refreshCaskList"_s, &L10n::refreshCaskList},
        {u"uninstallCask"_s, &L10n::uninstallCask},
        {u"searching"_s, &L10n::searching},
        {u"typeToSearch"_s, &L10n::typeToSearch},
        {u"noResultsFound"_s, &L10n::noResultsFound},
        {u"searchHomebrew"_s, &L10n::searchHomebrew},
        {u"checkingForUpdates"_s, &L10n::checkingForUpdates},
        {u"allUpToDate"_s, &L10n::allUpToDate},
        {u"updateAllPackages"_s, &L10n::updateAllPackages},
        {u"checkForUpdates"_s, &L10n::checkForUpdates},
        {u"loadingTaps"_s, &L10n::loadingTaps},
        {u"noTapsConfigured"_s, &L10n::noTapsConfigured},
        {u"refreshTaps"_s, &L10n::refreshTaps},
        {u"addTap"_s, &L10n::addTap},
        {u"addTapHelp"_s, &L10n::addTapHelp},
        {u"removeTapHelp"_s, &L10n::removeTapHelp},
        {u"enterTapName"_s, &L10n::enterTapName},
        {u"addingTap"_s, &L10n::addingTap},
        {u"removeTap"_s, &L10n::removeTap},
        {u"cleanupTitle"_s, &L10n::cleanupTitle},
        {u"cleanup"_s, &L10n::cleanup},
        {u"cleanupDesc"_s, &L10n::cleanupDesc},
        {u"runCleanup"_s, &L10n::runCleanup},
        {u"doctor"_s, &L10n::doctor},
        {u"doctorDesc"_s, &L10n::doctorDesc},
        {u"runDoctor"_s, &L10n::runDoctor},
        {u"diagnosis"_s, &L10n::diagnosis},
        {u"cleanupAndDoctor"_s, &L10n::cleanupAndDoctor},
        {u"confirmCleanup"_s, &L10n::confirmCleanup},
        {u"nothingToCleanUp"_s, &L10n::nothingToCleanUp},
        {u"formula"_s, &L10n::formula},
        {u"cask"_s, &L10n::cask},
        {u"updateAvailable"_s, &L10n::updateAvailable},
        {u"description"_s, &L10n::description},
        {u"details"_s, &L10n::details},
        {u"name"_s, &L10n::name},
        {u"version"_s, &L10n::version},
        {u"installedVersion"_s, &L10n::installedVersion},
        {u"homepage"_s, &L10n::homepage},
        {u"loadingInfo"_s, &L10n::loadingInfo},
        {u"packageNotFound"_s, &L10n::packageNotFound},
        {u"homePage"_s, &L10n::homePage},
        {u"contact"_s, &L10n::contact},
        {u"openSourceInfo"_s, &L10n::openSourceInfo},
        {u"restartToApply"_s, &L10n::restartToApply},
        {u"checkForUpdatesMenu"_s, &L10n::checkForUpdatesMenu},
        {u"selectCategory"_s, &L10n::selectCategory},
        {u"brewNotFound"_s, &L10n::brewNotFound},
        {u"brewNotFoundDesc"_s, &L10n::brewNotFoundDesc},
        {u"installHomebrew"_s, &L10n::installHomebrew},
        {u"updateComplete"_s, &L10n::updateComplete},
        {u"upToDate"_s, &L10n::upToDate},
        {u"updateCheckFailed"_s, &L10n::updateCheckFailed},
        {u"cannotConnect"_s, &L10n::cannotConnect},
        {u"updateCheckError"_s, &L10n::updateCheckError},
        {u"updateNow"_s, &L10n::updateNow},
        {u"later"_s, &L10n::later},
        {u"ok"_s, &L10n::ok},
        {u"downloadFailed"_s, &L10n::downloadFailed},
        {u"appBundleNotFound"_s, &L10n::appBundleNotFound},
        {u"extractFailed"_s, &L10n::extractFailed},
    };
    return texts;
}

const QMap<QString, Template>& templates() {
    static const QMap<QString, Template> texts{
        {u"confirmUninstall"_s, &L10n::confirmUninstall},
        {u"confirmRemoveTap"_s, &L10n::confirmRemoveTap},
        {u"updatedTo"_s, &L10n::updatedTo},
        {u"runningLatest"_s, &L10n::runningLatest},
        {u"newVersionAvailable"_s, &L10n::newVersionAvailable},
        {u"updateInfoText"_s, &L10n::updateInfoText},
    };
    return texts;
}

const QString countKey = u"dependencies"_s;

/// Whatever an entry gives for the argument; an entry without an argument ignores it.
QString textOf(const QString& key, const QString& argument) {
    if (key == countKey)
        return L10n::dependencies(argument.toInt());
    if (const PlainText plain = plainTexts().value(key))
        return (*plain)();
    const Template withArgument = templates().value(key);
    return withArgument != nullptr ? (*withArgument)(argument) : u"no such entry"_s;
}

/// Adds rows for each entry in each language, and the table's text of it.
void addRows(const QJsonArray& table, const std::function<bool(const QJsonObject&)>& isWanted) {
    QTest::addColumn<Lang>("lang");
    QTest::addColumn<QJsonObject>("entry");
    for (const Lang lang : allLangs) {
        for (const QJsonValue& value : table) {
            const QJsonObject entry = value.toObject();
            if (isWanted(entry))
                QTest::addRow("%s, %s", qPrintable(entry[u"key"_s].toString()),
                              qPrintable(rawValue(lang)))
                    << lang << entry;
        }
    }
}

/// Every setting is written to the preferences: not one for each of hundreds of rows.
void speak(Lang lang) {
    if (*LangManager::shared().current() != lang)
        LangManager::shared().setCurrent(lang);
}

} // namespace

void L10nTest::initTestCase() {
    QFile file(QStringLiteral(LUMORA_SOURCE_DIR "/tests/data/l10n.json"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    m_table = QJsonDocument::fromJson(file.readAll()).array();
}

void L10nTest::knowsEveryEntryOfTheTable() {
    QStringList inTable;
    for (const QJsonValue& entry : std::as_const(m_table)) {
        const QString key = entry[u"key"_s].toString();
        const QString argument = entry[u"argument"_s].toString();
        inTable.append(key);
        QCOMPARE(plainTexts().contains(key), argument.isEmpty());
        QCOMPARE(key == countKey, argument == u"count"_s);
    }
    QStringList known = plainTexts().keys() + templates().keys() + QStringList{countKey};
    inTable.sort();
    known.sort();
    QCOMPARE(known, inTable);
    QCOMPARE(known.size(), 101);
    QCOMPARE(known.removeDuplicates(), 0);
}

void L10nTest::hasTheTextInEveryLanguage_data() {
    addRows(m_table, [](const QJsonObject& entry) { return !entry.contains(u"argument"_s); });
}

void L10nTest::hasTheTextInEveryLanguage() {
    QFETCH(Lang, lang);
    QFETCH(QJsonObject, entry);
    speak(lang);
    const QString text = entry[rawValue(lang)].toString();
    QVERIFY(!text.isEmpty());
    QCOMPARE(textOf(entry[u"key"_s].toString(), {}), text);
}

void L10nTest::insertsTheArgumentAsItIs_data() {
    addRows(m_table, [](const QJsonObject& entry) {
        return entry.contains(u"argument"_s) && entry[u"key"_s] != countKey;
    });
}

void L10nTest::insertsTheArgumentAsItIs() {
    QFETCH(Lang, lang);
    QFETCH(QJsonObject, entry);
    speak(lang);
    const QString placeholder = u'{' + entry[u"argument"_s].toString() + u'}';
    const QStringList parts = entry[rawValue(lang)].toString().split(placeholder);
    QCOMPARE(parts.size(), 2);
    const QStringList arguments{u"1.2.0"_s,
                                u"user/repo"_s,
                                u""_s,
                                u"  two words\t"_s,
                                u"%1 %2 %n %%"_s,
                                u"{name} {tap} {version} {count}"_s,
                                u"one\ntwo\n"_s,
                                u"'; rm \"x\" & <b>\\</b>"_s,
                                u"한국어 🍺 \u202E"_s,
                                QString(u'\0'),
                                QString(10'000, u'x')};
    for (const QString& argument : arguments)
        QCOMPARE(textOf(entry[u"key"_s].toString(), argument), parts[0] + argument + parts[1]);
}

void L10nTest::insertsNumbersPlainly_data() {
    addRows(m_table, [](const QJsonObject& entry) { return entry[u"key"_s] == countKey; });
}

void L10nTest::insertsNumbersPlainly() {
    QFETCH(Lang, lang);
    QFETCH(QJsonObject, entry);
    speak(lang);
    // A locale that groups digits and has a minus sign of its own.
    const QLocale usual;
    QLocale::setDefault(QLocale(QLocale::NorwegianBokmal));
    const QList<std::pair<int, QString>> numbers{
        {0, u"0"_s},
        {12, u"12"_s},
        {-3, u"-3"_s},
        {1234567, u"1234567"_s},
        {std::numeric_limits<int>::max(), u"2147483647"_s},
        {std::numeric_limits<int>::min(), u"-2147483648"_s}};
    for (const auto& [number, digits] : numbers)
        QCOMPARE(L10n::dependencies(number),
                 entry[rawValue(lang)].toString().replace(u"{count}"_s, digits));
    QLocale::setDefault(usual);
}

void L10nTest::keepsHomebrewsOwnWords() {
    for (const Lang lang : allLangs) {
        LangManager::shared().setCurrent(lang);
        QCOMPARE(L10n::formulae(), u"Formulae"_s);
        QCOMPARE(L10n::casks(), u"Casks"_s);
        QCOMPARE(L10n::taps(), u"Taps"_s);
        QCOMPARE(L10n::formula(), u"Formula"_s);
        QCOMPARE(L10n::cask(), u"Cask"_s);
        QCOMPARE(L10n::cleanup(), L10n::cleanupTitle());
    }
}

void L10nTest::followsAChangeOfLanguage() {
    LangManager& languages = LangManager::shared();
    languages.setCurrent(Lang::ja);
    QCOMPARE(L10n::doctor(), u"Doctor"_s);
    QCOMPARE(L10n::runDoctor(), u"Doctor実行"_s);
    QCOMPARE(L10n::runningLatest(u"1.2.0"_s), u"最新バージョン（v1.2.0）を使用中です。"_s);
    languages.setCurrent(Lang::ko);
    QCOMPARE(L10n::doctor(), u"진단"_s);
    QCOMPARE(L10n::runDoctor(), u"진단 실행"_s);
    QCOMPARE(L10n::runningLatest(u"1.2.0"_s), u"최신 버전(v1.2.0)을 사용 중입니다."_s);
    languages.setCurrent(Lang::en);
    QCOMPARE(L10n::updateInfoText(u"1.0"_s),
             u"Current: v1.0\n\nThe app will restart after updating."_s);
    QCOMPARE(L10n::updatedTo(u""_s), u"Updated to v."_s);

    // Whoever hears of the change reads the new language already.
    QString heard;
    const QObject listening;
    languages.current().subscribe(&listening, [&](Lang) { heard = L10n::settings(); });
    languages.setCurrent(Lang::ja);
    QCOMPARE(heard, u"設定"_s);
}

QTEST_GUILESS_MAIN(L10nTest)
#include "tst_l10n.moc"
